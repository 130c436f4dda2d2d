#!/usr/bin/env bats
# Launch agents of a person whose systemd is a real one, in a booted machine.

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

@test "load starts the program, once" {
    launchctl load "$agent_file"
    expect_line agent '^started '
    launchctl load -w "$agent_file"
    [[ $(unit_state) == active ]]
    expect_silence agent 2
}

@test "a program that is killed comes back" {
    launchctl load "$agent_file"
    expect_line agent '^started '
    # shellcheck disable=SC2016 # the agent's own
    order 'kill -KILL $$'
    expect_line agent '^started '
}

@test "a program that ends by itself comes back, however often" {
    launchctl load "$agent_file"
    for _ in {1..7}; do
        expect_line agent '^started '
        order 'exit 0'
    done
    expect_line agent '^started '
}

@test "a program that is not to be kept alive stays away when it has ended" {
    property_list "$agent_program" "$label" 1 false | write_as_person "$agent_file"
    launchctl load "$agent_file"
    expect_line agent '^started '
    order 'exit 0'
    expect_silence agent 2
}

@test "what was unloaded stays away, and its file stays" {
    launchctl load "$agent_file"
    expect_line agent '^started '
    launchctl unload -w "$agent_file"
    [[ $(unit_state) == inactive ]]
    [[ -s $machine_root$agent_file ]]
    expect_silence agent 2
    launchctl unload "$agent_file"
    launchctl load "$agent_file"
    expect_line agent '^started '
}

@test "unload returns when the program has ended, be it slow" {
    launchctl load "$agent_file"
    expect_line agent '^started '
    order "trap 'sleep 1; echo ended >&4; exit 0' TERM; echo busy >&4; while :; do sleep 0.05; done"
    expect_line agent '^busy$'
    launchctl unload "$agent_file"
    [[ $(unit_state) == inactive ]]
    expect_line agent '^ended$'
}

@test "an agent that is about to be started again is unloaded, too" {
    # Not so soon that it comes before.
    printf '[Service]\nRestartSec=60\n' | write_as_person "$home/.config/systemd/user/$unit.d/later.conf"
    launchctl load "$agent_file"
    expect_line agent '^started '
    order 'exit 0'
    until_state activating
    launchctl unload "$agent_file"
    state_is inactive
    expect_silence agent 2
}

@test "unloading what was never loaded does nothing" {
    launchctl unload "$agent_file"
    [[ -z $(traces) ]]
}

@test "an agent that unloads itself sees the end of it" {
    launchctl load "$agent_file"
    expect_line agent '^started '
    order "trap '' TERM; '$VELQ_BUILD/nettools/launchctl' unload '$agent_file'; echo unloaded \$? >&4; exit 0"
    expect_line agent '^unloaded 0$'
    expect_silence agent 2
    until_state inactive
}

@test "an agent that unloads itself ends even if it does not expect that" {
    launchctl load "$agent_file"
    expect_line agent '^started '
    order "'$VELQ_BUILD/nettools/launchctl' unload '$agent_file'"
    until_state inactive
    expect_silence agent 2
}

@test "an agent that loads a new definition of itself is replaced" {
    launchctl load "$agent_file"
    expect_line agent '^started '
    property_list "$agent_program" "$label" 2 | write_as_person "$agent_file"
    order "'$VELQ_BUILD/nettools/launchctl' load '$agent_file'"
    expect_line agent '^started '
}

@test "a new version, and a new program, are started in the old one's place" {
    launchctl load "$agent_file"
    expect_line agent '^started '
    property_list "$agent_program" "$label" 2 | write_as_person "$agent_file"
    launchctl load "$agent_file"
    expect_line agent '^started '
    as_person cp "$agent_program" "$home/other"
    property_list "$home/other" "$label" 2 | write_as_person "$agent_file"
    launchctl load "$agent_file"
    expect_line agent '^started '
    [[ $(as_person systemctl --user show --property ExecStart "$unit") == *"path=$home/other "* ]]
}

@test "an agent whose file was deleted never starts again" {
    launchctl load "$agent_file"
    expect_line agent '^started '
    as_person rm "$agent_file"
    order 'exit 0'
    expect_silence agent 3
    make_desktop xdg-desktop-autostart.target
    start_desktop
    expect_silence agent 2
}

@test "an agent whose program was deleted is not tried for ever" {
    launchctl load "$agent_file"
    expect_line agent '^started '
    as_person rm "$agent_program"
    order 'exit 0'
    until_state inactive
}

@test "what cannot be loaded is told and leaves nothing" {
    refuses 'No such file' launchctl load "$home/nothing.plist"
    echo damaged | write_as_person "$home/damaged.plist"
    refuses 'not a property list' launchctl load "$home/damaged.plist"
    refuses 'not a property list' launchctl load /dev/zero
    property_list "$agent_program" | sed /Label/d | write_as_person "$home/bad.plist"
    refuses 'has no Label' launchctl load "$home/bad.plist"
    property_list "$agent_program" | sed /Program/d | write_as_person "$home/bad.plist"
    refuses 'has no Program' launchctl load "$home/bad.plist"
    property_list "$agent_program" '../../evil' | write_as_person "$home/bad.plist"
    refuses "cannot be a service's name" launchctl load "$home/bad.plist"
    property_list "$home/"$'agent\n[Service]\nExecStart=/bin/false' | write_as_person "$home/bad.plist"
    refuses 'cannot be written into a unit file' launchctl load "$home/bad.plist"
    property_list agent | write_as_person "$home/bad.plist"
    refuses 'not an absolute path' launchctl load "$home/bad.plist"
    property_list "$home/gone" | write_as_person "$home/bad.plist"
    refuses 'cannot be executed' launchctl load "$home/bad.plist"
    [[ -z $(traces) ]]
}

@test "a service that is somebody else's is left alone" {
    property_list "$agent_program" dbus | write_as_person "$home/bad.plist"
    refuses "no launch agent's" launchctl load "$home/bad.plist"
    refuses "no launch agent's" launchctl unload "$home/bad.plist"
    [[ -z $(traces) ]]
    printf '[Service]\nExecStart=/bin/true\n' | write_as_person "$home/.config/systemd/user/$unit"
    refuses "no launch agent's" launchctl load "$agent_file"
    refuses "no launch agent's" launchctl unload "$agent_file"
    [[ $(<"$machine_root$home/.config/systemd/user/$unit") == *'/bin/true' ]]
}

@test "without a service manager that is told, and nothing is left" {
    refuses 'no systemd runs for this user' as_person XDG_RUNTIME_DIR=/nowhere \
        "$VELQ_BUILD/nettools/launchctl" load "$agent_file"
    [[ -z $(traces) ]]
}

@test "where the service manager does not look, nothing is left" {
    refuses 'refuses' as_person "XDG_CONFIG_HOME=$home/elsewhere" \
        "$VELQ_BUILD/nettools/launchctl" load "$agent_file"
    [[ -z $(as_person find "$home/elsewhere" -type f) ]]
}

@test "root's agents are the system's" {
    local file=/root/$unit.plist
    property_list "$agent_program" >"$machine_root$file"
    "${machine[@]}" env DISPLAY=:3 "$VELQ_BUILD/nettools/launchctl" load "$file"
    expect_line agent '^started DISPLAY=:3 '
    [[ -L $machine_root/etc/systemd/system/multi-user.target.wants/$unit ]]
    [[ $("${machine[@]}" systemctl show-environment) != *DISPLAY* ]]
    order 'exit 0'
    expect_line agent '^started DISPLAY=:3 '
    "${machine[@]}" "$VELQ_BUILD/nettools/launchctl" unload "$file"
    [[ $("${machine[@]}" systemctl show --property ActiveState --value "$unit") == inactive ]]
    expect_silence agent 2
}
