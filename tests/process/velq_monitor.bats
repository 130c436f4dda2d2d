#!/usr/bin/env bats
# velq monitor: the monitor as it was built, for a person of a booted machine.

# shellcheck source-path=SCRIPTDIR/../support
source "$BATS_TEST_DIRNAME/../support/agents.bash"

setup()
{
    need_machine
    # shellcheck disable=SC2119 # it needs no options
    boot_machine
    add_person
    label=com.zelmor.Monitor
    unit=$label.service
    velq=$VELQ_BUILD/VelqMonitor.app/Contents/MacOS/velq
    agent_file=$home/Library/LaunchAgents/$label.plist
    copy="$home/Library/Application Support/Velq/VelqMonitor.app"
}

teardown()
{
    stop_machine
    stop_everything
}

# says STATUS TEXT WORDS...: what comes of a command line of the person's.
says()
{
    local status=0 said
    said=$(as_person "${@:3}" 2>&1) || status=$?
    [[ $status == "$1" && $said == "$2" ]] || complain "it ended with $status: $said"
}

record()
{
    as_person "$velq" monitor "$1" --json | tr -d '\n '
}

is_there()
{
    as_person test -e "$1"
}

is_gone()
{
    as_person test ! -e "$1"
}

@test "installed, stopped, started and removed" {
    says 0 'The monitor is installed. It runs, and starts at each log-in.' "$velq" monitor install
    until_state active
    is_there "$agent_file"
    is_there "$copy/Contents/MacOS/VelqMonitor"
    # Where the main application is, nobody has said.
    is_gone "$home/Library/Preferences/com.zelmor.Velq.plist"
    says 0 'The monitor is stopped until the next log-in.' "$velq" monitor stop
    state_is inactive
    says 0 'The monitor runs.' "$velq" monitor start
    until_state active
    says 0 'The monitor is removed.' "$velq" monitor uninstall
    state_is inactive
    is_gone "$agent_file"
    is_gone "$copy"
    [[ -z $(traces) ]]
}

@test "for programs" {
    [[ $(record install) == '{"installed":true,"running":true,"version":1000000}' ]]
    [[ $(record stop) == '{"installed":true,"running":false,"version":1000000}' ]]
    [[ $(record start) == '{"installed":true,"running":true,"version":1000000}' ]]
    [[ $(record uninstall) == '{"installed":false,"running":false,"version":null}' ]]
}

@test "installed again: what is there stays, and runs again" {
    record install
    as_person touch "$copy/mark"
    record stop
    says 0 'The monitor is installed. It runs, and starts at each log-in.' "$velq" monitor install
    is_there "$copy/mark"
    until_state active
}

@test "an older one is replaced" {
    record install
    as_person touch "$copy/mark"
    as_person sed -i 's/1000000/999999/' "$agent_file"
    [[ $(record install) == '{"installed":true,"running":true,"version":1000000}' ]]
    is_gone "$copy/mark"
}

@test "with nothing installed" {
    says 1 'The monitor is not installed.' "$velq" monitor start
    says 0 'The monitor is not installed.' "$velq" monitor stop
    says 0 'The monitor is not installed.' "$velq" monitor uninstall
}

@test "without a service manager it is installed but does not run" {
    "${machine[@]}" systemctl stop "user@$person_id.service"
    run as_person "$velq" monitor install
    [[ $status == 1 ]]
    [[ ${lines[-1]} == 'The monitor is installed, but could not be started.' ]]
    # Why, only the tool knows.
    [[ ${lines[0]} == 'launchctl: '* ]] || complain "$output"
    is_there "$agent_file"
}

@test "the installed one does not install itself" {
    record install
    says 1 "velq: this is the installed monitor's own command; to install a monitor, call that of the application" \
        "$copy/Contents/MacOS/velq" monitor install
    until_state active
    is_there "$copy/Contents/MacOS/VelqMonitor"
    says 0 'The monitor is removed.' "$copy/Contents/MacOS/velq" monitor uninstall
}

@test "an action that there is none of" {
    run as_person "$velq" monitor restart
    [[ $status == 2 && ${lines[0]} == "velq: 'restart' is none of its actions, which are install, uninstall, start, stop" ]]
    [[ ${lines[1]} == 'usage: velq monitor ACTION [--json] [--help]' ]] || complain "${lines[1]}"
}
