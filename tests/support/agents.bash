# shellcheck shell=bash
# Launch agents in a booted machine, and a person there who loads them.

# shellcheck source-path=SCRIPTDIR/../support
source "$(dirname "${BASH_SOURCE[0]}")/machine.bash"

person=carol
person_id=4711
label=org.example.agent
unit=$label.service

# A person of the machine, whose user manager runs from now on.
add_person()
{
    chmod 711 "$BATS_RUN_TMPDIR"
    add_user "$person" "$person_id"
    home=$(home_of "$person")
    "${machine[@]}" systemctl start "user@$person_id.service"
}

# A booted machine with that person, and an agent to load.
setup_agents()
{
    need_machine
    # shellcheck disable=SC2119 # it needs no options
    boot_machine
    add_person
    # shellcheck disable=SC2119 # nor does this
    make_agent
}

# as_person [NAME=VALUE...] COMMAND...: in the home folder, with nothing of a session in the environment.
as_person()
{
    "${machine[@]}" setpriv --reuid "$person_id" --regid "$person_id" --clear-groups \
        env -i -C "$home" "HOME=$home" "XDG_RUNTIME_DIR=/run/user/$person_id" PATH=/usr/bin:/bin LANG=C.UTF-8 "$@"
}

# write_as_person FILE: what comes in.
write_as_person()
{
    # shellcheck disable=SC2016 # the inner shell's
    as_person sh -c 'mkdir -p "$(dirname "$1")" && cat >"$1"' sh "$1"
}

# property_list PROGRAM [LABEL [VERSION [KEEPALIVE]]]
property_list()
{
    local program=${1//&/\&amp;}
    program=${program//</\&lt;}
    cat <<LIST
<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0">
<dict>
  <key>KeepAlive</key><${4:-true}/>
  <key>Label</key><string>${2:-$label}</string>
  <key>Version</key><integer>${3:-1}</integer>
  <key>Program</key><string>$program</string>
</dict>
</plist>
LIST
}

# make_agent [FOLDER]: sets agent_file and agent_program, in that folder of the person's if one is named. The agent
# says "started" and its display at each start, and then does the orders that it is given.
# shellcheck disable=SC2120 # it is the tests that name one
make_agent()
{
    agent_file=$home/Library/LaunchAgents/${1:+$1/}$label.plist
    agent_program=$home/${1:+$1/}agent
    if [[ -z ${outputs[agent]:-} ]]; then
        open_stream agent
        open_stream orders
    fi
    chmod 755 "$here"
    chmod 666 "$here/agent.out" "$here/orders.out"
    write_as_person "$agent_program" <<PROGRAM
#!/bin/bash
exec 3<>"$here/orders.out" 4>"$here/agent.out"
echo "started DISPLAY=\$DISPLAY WAYLAND_DISPLAY=\$WAYLAND_DISPLAY XAUTHORITY=\$XAUTHORITY" >&4
while read -r -u 3 order; do eval "\$order"; done
PROGRAM
    as_person chmod 755 "$agent_program"
    property_list "$agent_program" | write_as_person "$agent_file"
}

# order COMMAND: for the running agent.
order()
{
    printf '%s\n' "$*" >"$here/orders.out"
}

launchctl()
{
    as_person "$VELQ_BUILD/nettools/launchctl" "$@"
}

# with_display NAME=VALUE... -- ARGUMENTS...: launchctl as a program of a desktop calls it.
with_display()
{
    local variables=()
    while [[ $1 != -- ]]; do
        variables+=("$1")
        shift
    done
    as_person "${variables[@]}" "$VELQ_BUILD/nettools/launchctl" "${@:2}"
}

# refuses REGEX COMMAND...: it fails with this sentence.
refuses()
{
    local status=0 said
    said=$("${@:2}" 2>&1) || status=$?
    [[ $status == 1 && $said =~ $1 ]] || complain "status $status and '$said' instead of '$1'"
}

# What a load leaves behind, or part of it.
traces()
{
    as_person sh -c 'find .config -type f -o -type l 2>/dev/null' | sort
}

unit_state()
{
    as_person systemctl --user show --property ActiveState --value "$unit"
}

# Everything the person runs ends, and a new user manager comes up.
log_in_anew()
{
    "${machine[@]}" systemctl restart "user@$person_id.service"
}

# make_desktop WANTED: what a desktop of systemd's kind starts at log-in; see start_desktop.
make_desktop()
{
    write_as_person "$home/.config/systemd/user/desktop.target" <<UNIT
[Unit]
Wants=$1
Before=$1
BindsTo=graphical-session.target
Before=graphical-session.target
UNIT
    as_person systemctl --user daemon-reload
}

start_desktop()
{
    as_person systemctl --user start desktop.target
}

state_is()
{
    [[ $(unit_state) == "$1" ]]
}

# until_state STATE: the unit's.
until_state()
{
    until_true state_is "$1"
}

# The address of the person's own session bus.
persons_bus()
{
    echo "DBUS_SESSION_BUS_ADDRESS=unix:path=/run/user/$person_id/bus"
}
