# shellcheck shell=bash
# The monitor itself, the real program.

# shellcheck source-path=SCRIPTDIR/../support
source "$(dirname "${BASH_SOURCE[0]}")/bus.bash"

green='^[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}  Connected to the network\. Available: '
red='^[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}  No network connection\. Available: Repair Connection \(r\), '

# Sets program and surroundings: no display, no bus, a home and a runtime folder of its own. A test adds to them.
make_surroundings()
{
    program=$VELQ_BUILD/VelqMonitor.app/Contents/MacOS/VelqMonitor
    mkdir -p "$here/home" "$here/runtime"
    chmod 700 "$here/runtime"
    surroundings=(env -u DISPLAY -u WAYLAND_DISPLAY -u DBUS_SESSION_BUS_ADDRESS
        "DBUS_SYSTEM_BUS_ADDRESS=$(bus_address system)" "HOME=$here/home" "XDG_RUNTIME_DIR=$here/runtime"
        "TMPDIR=$here" LC_ALL=C.UTF-8)
}

# with WORDS...: more of env's, for those that are started from now on.
with()
{
    surroundings+=("$@")
}

# Starts a session bus for those that are started from now on.
with_session_bus()
{
    start_bus session "${inside[@]}"
    with "DBUS_SESSION_BUS_ADDRESS=$(bus_address session)"
}

# start_monitor NAME [ARGUMENTS...]: in the terminal, unless told otherwise.
start_monitor()
{
    local name=$1
    shift
    start "$name" "${inside[@]}" "${tied[@]}" "${surroundings[@]}" "$program" "${@:---console}"
}

# has_ended NAME: by itself, with status 0 and nothing on standard error.
has_ended()
{
    wait_for "$1"
    [[ $status == 0 ]] || complain "$1 ended with $status; $(report "$1")"
    [[ ! -s $here/$1.err ]] || complain "$1 wrote to standard error: $(<"$here/$1.err")"
}

# end_monitor NAME [SIGNAL]: it ends at once, with status 0 and nothing on standard error.
end_monitor()
{
    local asked=$EPOCHREALTIME
    kill "-${2:-TERM}" "${pids[$1]}"
    has_ended "$1"
    (($(milliseconds_since "$asked") < 5000)) || complain "$1 took its time to end"
}

# expect_changes NAME: it goes on showing the network's state, told by the kernel and not by its own
# two-second look, which alone would come two seconds after another. Leaves it connected. On a busy machine some
# rounds take longer; those do not count.
expect_changes()
{
    local begin round quick=0
    for ((round = 0; round < 20 && quick < 5; ++round)); do
        begin=$EPOCHREALTIME
        pull_cable
        expect_line "$1" "$red"
        put_cable_back
        expect_line "$1" "$green"
        (($(milliseconds_since "$begin") >= 1800)) || ((++quick))
    done
    ((quick == 5)) || complain "$1 learns of changes late"
}
