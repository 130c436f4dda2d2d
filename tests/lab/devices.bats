#!/usr/bin/env bats
# A device joins the network: the kernel's neighbours, our netstat, the device watch, a real notification daemon. A pass
# comes every twenty seconds, and this takes three.

source "$BATS_TEST_DIRNAME/lab.bash"

setup()
{
    need_lab
    need Xvfb dunst gdbus dbus-monitor ping
    make_lab
    start_bus system "${inside[@]}"
    with_session_bus
    start_router
}

teardown()
{
    # In its own time, else it leaves its lock behind.
    [[ ! -v pids[display] ]] || stop display
    stop_everything
}

in_session()
{
    "${inside[@]}" "${surroundings[@]}" "$@"
}

# The X server stays outside of the laboratory: it tells by the network namespace which numbers are taken.
start_notification_daemon()
{
    start display "${tied[@]}" Xvfb -displayfd 1 -screen 0 640x240x24 -nolisten tcp -noreset
    expect_line display '^[0-9]+$'
    local screen=$line
    printf '%s\n' '[global]' 'history_length = 20' >"$here/dunstrc"
    start dunst "${inside[@]}" "${tied[@]}" "${surroundings[@]}" "DISPLAY=:$screen" dunst -conf "$here/dunstrc"
    in_session gdbus wait --session --timeout "$patience" org.freedesktop.Notifications
}

watch_notifications()
{
    start notifications "${inside[@]}" "${tied[@]}" "${surroundings[@]}" \
        dbus-monitor --session "interface='org.freedesktop.Notifications',member='Notify'"
    await_line notifications 'member=NameLost$'
    expect_line notifications 'string "'
}

# A netstat that says when it has run, and hands on to the one that the monitor would have found.
log_passes()
{
    open_stream passes
    mkdir "$here/tools"
    cat >"$here/tools/netstat" <<TOOL
#!/bin/sh
PATH=\${PATH#"$here/tools:"}
netstat "\$@"
status=\$?
echo pass >'$here/passes.out'
exit \$status
TOOL
    chmod +x "$here/tools/netstat"
    with "PATH=$here/tools:$PATH"
}

# The guest says hello, and so the computer knows it.
join_guest()
{
    keep_namespaces guest --net
    local guest=(nsenter -t "${pids[guest]}" --net)
    "${router[@]}" ip -batch - <<LINES
link add lan1 type veth peer name eth0 netns ${pids[guest]}
link set lan1 master switch0
link set lan1 up
LINES
    "${guest[@]}" ip -batch - <<'LINES'
link set eth0 address 02:00:5e:10:0a:ff
link set eth0 up
addr add 192.168.77.7/24 dev eth0
LINES
    "${guest[@]}" ping -q -c 1 -W 10 "$1" >&2
}

own_address()
{
    "${inside[@]}" ip -4 -o address show dev eth0 | sed -E 's/.* inet ([0-9.]+).*/\1/'
}

expect_notification()
{
    expect_line notifications 'member=Notify$'
    expect_line notifications '^   string "Velq"$'
    expect_line notifications '^   uint32 0$'
    expect_line notifications '^   string ""$'
    expect_line notifications '^   string "New device add"$'
    expect_line notifications '^   string "ip: 192\.168\.77\.7$'
    expect_line notifications '^Mac address: 2:0:5e:10:a:ff"$'
    await_line notifications '^   int32 -1$'
}

# What the daemon shows goes to its record when it is closed.
expect_record()
{
    local record
    in_session gdbus call --session --dest org.freedesktop.Notifications --object-path /org/freedesktop/Notifications \
        --method org.dunstproject.cmd0.NotificationCloseAll
    record=$(in_session gdbus call --session --dest org.freedesktop.Notifications \
        --object-path /org/freedesktop/Notifications --method org.dunstproject.cmd0.NotificationListHistory)
    [[ $record == *"'summary': <'New device add'>"* ]]
    [[ $record == *"'body': <'ip: 192.168.77.7\\nMac address: 2:0:5e:10:a:ff'>"* ]]
    [[ $(grep -o "'summary'" <<<"$record" | wc -l) == 1 ]]
}

@test "a device that joins is announced once, on the desktop and in the terminal" {
    # The router is known, and announcements are, before the first pass: from the monitor's start on the clock runs.
    start_network_manager network_manager
    in_session nm-online --quiet --timeout "$patience"
    "${inside[@]}" ping -q -c 1 -W 10 192.168.77.1
    start_notification_daemon
    watch_notifications
    log_passes
    start_monitor monitor
    expect_line monitor "$green"

    expect_line passes '^pass$'
    join_guest "$(own_address)"
    expect_line passes '^pass$'
    expect_line monitor '  New device add: ip: 192\.168\.77\.7, Mac address: 2:0:5e:10:a:ff$'
    expect_notification
    expect_record

    expect_line passes '^pass$'
    expect_silence monitor 2
    expect_silence notifications 0.1
    end_monitor monitor
}
