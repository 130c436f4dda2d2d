#!/usr/bin/env bats
# Launch agents and the desktops that they belong to, in a booted machine.

# shellcheck source-path=SCRIPTDIR/../support
source "$BATS_TEST_DIRNAME/../support/agents.bash"

setup()
{
    setup_agents
}

teardown()
{
    stop_machine
    stop_everything
}

@test "a desktop that systemd starts brings the agent back, once, and takes it along" {
    launchctl load "$agent_file"
    expect_line agent '^started '
    make_desktop xdg-desktop-autostart.target
    log_in_anew
    expect_silence agent 2
    start_desktop
    expect_line agent '^started '
    expect_silence agent 2
    as_person systemctl --user stop desktop.target
    until_state inactive
    expect_silence agent 2
}

@test "what was unloaded is back at the next log-in" {
    launchctl load "$agent_file"
    expect_line agent '^started '
    launchctl unload "$agent_file"
    make_desktop graphical-session.target
    log_in_anew
    start_desktop
    expect_line agent '^started '
}

@test "a desktop that knows only autostart entries brings the agent back" {
    launchctl load "$agent_file"
    expect_line agent '^started '
    log_in_anew
    as_person DISPLAY=:5 gio launch ".config/autostart/$label.agent.desktop"
    expect_line agent '^started DISPLAY=:5 '
    expect_silence agent 2
}

@test "the display is handed on" {
    with_display DISPLAY=:7 XAUTHORITY=/run/x7 -- load "$agent_file"
    expect_line agent '^started DISPLAY=:7 WAYLAND_DISPLAY= XAUTHORITY=/run/x7$'
    with_display DISPLAY=:7 XAUTHORITY=/run/x7 -- load "$agent_file"
    launchctl load "$agent_file"
    with_display DISPLAY=localhost:10.0 -- load "$agent_file"
    expect_silence agent 2
    with_display DISPLAY=:8 WAYLAND_DISPLAY=wayland-1 -- load "$agent_file"
    expect_line agent '^started DISPLAY=:8 WAYLAND_DISPLAY=wayland-1 XAUTHORITY=$'
    order 'exit 0'
    expect_line agent '^started DISPLAY=:8 WAYLAND_DISPLAY=wayland-1 XAUTHORITY=$'
}

@test "a display of the same name that came up later is another one" {
    with_display DISPLAY=:7 -- load "$agent_file"
    expect_line agent '^started DISPLAY=:7 '
    "${machine[@]}" mkdir -p /tmp/.X11-unix
    "${machine[@]}" touch /tmp/.X11-unix/X7
    with_display DISPLAY=:7 -- load "$agent_file"
    expect_line agent '^started DISPLAY=:7 '
    with_display DISPLAY=:7 -- load "$agent_file"
    expect_silence agent 2
}

@test "a session bus of the session's own is handed on" {
    with_display DISPLAY=:7 DBUS_SESSION_BUS_ADDRESS=unix:path=/run/other -- load "$agent_file"
    expect_line agent '^started '
    order "echo \"bus \$DBUS_SESSION_BUS_ADDRESS\" >&4"
    expect_line agent '^bus unix:path=/run/other$'
    with_display DISPLAY=:7 "DBUS_SESSION_BUS_ADDRESS=unix:path=/run/user/$person_id/bus,guid=1" -- load "$agent_file"
    expect_silence agent 2
}

@test "paths may hold what means something to a unit file, an entry or a shell" {
    make_agent "a b%h \$HOME \${HOME} 'q' \"x\\y; é & <"
    with_display DISPLAY=:7 -- load "$agent_file"
    expect_line agent '^started '
    order 'exit 0'
    expect_line agent '^started '
    log_in_anew
    as_person DISPLAY=:5 gio launch ".config/autostart/$label.agent.desktop"
    expect_line agent '^started DISPLAY=:5 '
    make_desktop xdg-desktop-autostart.target
    log_in_anew
    start_desktop
    expect_line agent '^started '
    as_person rm "$agent_file"
    order 'exit 0'
    expect_silence agent 2
}
