# shellcheck shell=bash
# Message buses of the test's own.

# shellcheck source-path=SCRIPTDIR/../support
source "$(dirname "${BASH_SOURCE[0]}")/network.bash"

# start_bus NAME [WORDS before the command...]: everybody may do everything, nobody is started by it.
start_bus()
{
    local name=$1
    shift
    cat >"$here/$name.conf" <<CONFIG
<busconfig>
  <type>session</type>
  <listen>unix:path=$here/$name.socket</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
    <allow user="*"/>
  </policy>
</busconfig>
CONFIG
    start "$name" "$@" "${tied[@]}" dbus-daemon --config-file="$here/$name.conf" --nofork --print-address
    expect_line "$name" "^unix:"
}

# bus_address NAME: also of a bus that was never started.
bus_address()
{
    echo "unix:path=$here/$1.socket"
}

# post NAME OBJECT: a notification between processes, on the bus "session".
post()
{
    "${inside[@]}" dbus-send --bus="$(bus_address session)" --type=signal \
        /com/zelmor/DistributedNotificationCenter com.zelmor.DistributedNotificationCenter.Posted \
        "string:$1" "string:$2"
}
