# shellcheck shell=bash
# Tools of the test's own on PATH, which tell how they were called.

# shellcheck source-path=SCRIPTDIR/../support
source "$(dirname "${BASH_SOURCE[0]}")/monitor.bash"

# For those that are started from now on, after make_surroundings. The calls are the lines of the stream "tools".
with_fake_tools()
{
    mkdir "$here/bin"
    with "PATH=$here/bin:$PATH"
    open_stream tools
}

# fake NAME [SCRIPT]
fake()
{
    cat >"$here/bin/$1" <<TOOL
#!/bin/sh
echo "$1 \$*" >'$here/tools.out'
${2:-}
TOOL
    chmod +x "$here/bin/$1"
}

# fake_ports 'NAME|DEVICE|ADDRESS|Enabled or Disabled|active or inactive'...: a networksetup and an ifconfig that know
# these; an empty address is not told. The last one of all is never looked at.
fake_ports()
{
    local port name device address service link
    mkdir -p "$here/services" "$here/links"
    : >"$here/ports"
    for port; do
        IFS='|' read -r name device address service link <<<"$port"
        printf '\nHardware Port: %s\nDevice: %s\n%s' "$name" "$device" \
            "${address:+Ethernet Address: $address$'\n'}" >>"$here/ports"
        echo "$service" >"$here/services/$name"
        printf '%s: flags\n\tstatus: %s\n' "$device" "$link" >"$here/links/$device"
    done
    fake networksetup "case \$1 in
-listallhardwareports) cat '$here/ports' ;;
-getnetworkserviceenabled) cat '$here/services'/\"\$2\" ;;
esac"
    fake ifconfig "cat '$here/links'/\"\$1\""
}

# A root daemon that says what it is asked and answers nothing, on the bus "system".
start_fake_daemon()
{
    start_answering_daemon ''
}

# start_answering_daemon ANSWER: the same to every question.
start_answering_daemon()
{
    [[ $EUID == 0 ]] || skip 'only root can be the root that answers'
    [[ -v pids[system] ]] || start_bus system
    DBUS_SYSTEM_BUS_ADDRESS=$(bus_address system) start daemon "${tied[@]}" \
        "$VELQ_SOURCE/tests/support/fake-root-daemon" output "$1"
    expect_line daemon '^ready$'
}
