#!/usr/bin/env bats
# The device watch and a netstat that is missing, or does what it should not. A pass comes every twenty seconds, so
# all cases run side by side, each a monitor in a session of its own.

source "$BATS_TEST_DIRNAME/../support/monitor.bash"

setup()
{
    need ip unshare nsenter setpriv dbus-daemon
    make_network
    make_surroundings
    connect
    open_stream passes
}

teardown()
{
    kill_hanging_tool
    stop_everything
}

# The monitor leaves it behind when it ends.
kill_hanging_tool()
{
    [[ ! -s $here/hanging.pid ]] || kill -KILL "$(<"$here/hanging.pid")" 2>/dev/null || true
}

# start_with_tool CASE SCRIPT [SURROUNDINGS...]: a monitor whose netstat runs SCRIPT in its first pass, and lists
# one device in those after, from when $here/go is there.
start_with_tool()
{
    mkdir -p "$here/$1/bin"
    mkdir -m 700 "$here/$1/runtime"
    cat >"$here/$1/bin/netstat" <<TOOL
#!/bin/sh
if mkdir '$here/$1/ran' 2>/dev/null; then
    echo '$1: first pass' >'$here/passes.out'
    ${2:-exit}
elif [ -e '$here/go' ]; then
    echo '192.168.7.9  a:b:c:d:e:f  UHLWI  lan0'
    echo '$1: later pass' >'$here/passes.out'
fi
TOOL
    chmod +x "$here/$1/bin/netstat"
    start_case "$1" "PATH=$here/$1/bin:$PATH" "${@:3}"
}

# start_case CASE SURROUNDINGS...
start_case()
{
    local name=$1 before=("${surroundings[@]}")
    shift
    with "XDG_RUNTIME_DIR=$here/$name/runtime" "$@"
    start_monitor "$name"
    surroundings=("${before[@]}")
    expect_line "$name" "$green"
}

# Away from its bundle it has no helpers, and this PATH has no tools at all.
start_without_tool()
{
    mkdir "$here/$1"
    mkdir -m 700 "$here/$1/runtime"
    cp "$program" "$here/$1/"
    local program=$here/$1/VelqMonitor
    start_case "$1" "PATH=$here/$1/runtime"
}

# await_passes WHICH CASES...: each case's has begun.
await_passes()
{
    local which=$1 name
    shift
    : >"$here/passes.lines"
    for name; do
        grep -q "^$name: $which pass" "$here/passes.lines" || await_line passes "^$name: $which pass"
    done
}

expect_little_work()
{
    local name
    for name; do
        (($(processor_time "${pids[$name]}") < 3000)) || complain "$name has worked for $(processor_time "${pids[$name]}") ms"
    done
}

@test "whatever netstat does, the watch goes on, and the monitor with it" {
    local cases=(failing nonsense undecodable binary huge unheard hanging) name
    start_without_tool missing
    start_with_tool failing 'exit 1'
    start_with_tool nonsense 'echo 192.168; echo "192.168.7.9"; echo ". . . . 192.168"; printf "no end of line"'
    start_with_tool undecodable 'printf "192.168.7.9 a:b:c:d:e:f \\377\\n"'
    start_with_tool binary 'head -c 100000 /dev/urandom'
    start_with_tool huge 'yes "192.168.7.300.not.an.address a:b:c:d:e:f UHLWI" | head -c 10000000'
    # On a bus where nobody shows notifications.
    start_bus session "${inside[@]}"
    start_with_tool unheard '' "DBUS_SESSION_BUS_ADDRESS=$(bus_address session)"
    start_with_tool hanging "echo \$\$ >'$here/hanging.pid'; exec sleep infinity"

    await_passes first "${cases[@]}"
    pull_cable
    for name in missing "${cases[@]}"; do
        expect_line "$name" "$red"
    done
    touch "$here/go"

    # The first pass found no device, and that was the baseline; one that hangs stored none.
    await_passes later "${cases[@]}"
    for name in failing nonsense undecodable binary huge unheard; do
        expect_line "$name" '  New device add: ip: 192\.168\.7\.9, Mac address: a:b:c:d:e:f$'
    done
    put_cable_back
    for name in missing "${cases[@]}"; do
        expect_line "$name" "$green"
    done
    expect_little_work missing "${cases[@]}"
    for name in missing "${cases[@]}"; do
        end_monitor "$name"
    done
}
