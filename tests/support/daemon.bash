# shellcheck shell=bash
# The root daemon in a booted machine, as an installation leaves it there.

# shellcheck source-path=SCRIPTDIR/../support
source "$(dirname "${BASH_SOURCE[0]}")/machine.bash"

bats_require_minimum_version 1.5.0

bus_name=com.zelmor.VelqDamonObject
unit=com.zelmor.VelqDemon.service

# put SOURCE PLACE [MODE]: a file of root's in the machine.
put()
{
    install -D -o 0 -g 0 -m "${3:-0644}" "$1" "$machine_root$2"
}

# shellcheck disable=SC2119 # the machine needs no options
boot_with_daemon()
{
    need_machine
    boot_machine
    install_daemon
}

# Everything but somebody's grant.
install_daemon()
{
    local resources=$VELQ_SOURCE/resources/VelqDemon
    put "$VELQ_BUILD/daemon/VelqDemon" /usr/libexec/velq/VelqDemon 0755
    put "$resources/com.zelmor.velqdemon.policy" /usr/share/polkit-1/actions/com.zelmor.velqdemon.policy
    put "$resources/$unit" "/etc/systemd/system/$unit"
    put "$resources/$bus_name.service" "/usr/share/dbus-1/system-services/$bus_name.service"
    put "$resources/$bus_name.conf" "/etc/dbus-1/system.d/$bus_name.conf"
    relax_for_sanitizers
    grant 0 root
    "${machine[@]}" systemctl daemon-reload
}

# A sanitized program needs what the unit takes away: writable code, the address space, its library's files.
relax_for_sanitizers()
{
    if is_sanitized; then
        drop_in sanitizers <<UNIT
[Service]
MemoryDenyWriteExecute=no
MemoryMax=infinity
SystemCallFilter=
LockPersonality=no
NoExecPaths=
Environment=ASAN_OPTIONS=log_path=/var/log/velq-sanitizer:detect_leaks=1:abort_on_error=0
Environment=UBSAN_OPTIONS=log_path=/var/log/velq-sanitizer:print_stacktrace=1
Environment=TSAN_OPTIONS=log_path=/var/log/velq-sanitizer
UNIT
    fi
}

is_sanitized()
{
    ldd "$VELQ_BUILD/daemon/VelqDemon" | grep -q 'lib[at]san'
}

# drop_in NAME <TEXT: what a test wants otherwise in the unit.
drop_in()
{
    mkdir -p "$machine_root/etc/systemd/system/$unit.d"
    cat >"$machine_root/etc/systemd/system/$unit.d/$1.conf"
    "${machine[@]}" systemctl daemon-reload
}

# daemon_options WORDS: for its command line.
daemon_options()
{
    drop_in options <<UNIT
[Service]
ExecStart=
ExecStart=/usr/libexec/velq/VelqDemon $*
UNIT
}

# grant UID NAME
grant()
{
    mkdir -p "$machine_root/etc/velq/authorized.d"
    chmod 755 "$machine_root/etc/velq" "$machine_root/etc/velq/authorized.d"
    echo "$1 $2" >"$machine_root/etc/velq/authorized.d/$1"
    chmod 644 "$machine_root/etc/velq/authorized.d/$1"
    if [[ $1 != 0 ]]; then
        sed "s/@UID@/$1/g" "$VELQ_SOURCE/resources/VelqDemon/$bus_name.UID.conf" \
            >"$machine_root/etc/dbus-1/system.d/$bus_name.$1.conf"
    fi
    reload_bus
}

# Anna and Bert, both of whom may call.
add_two_people()
{
    add_user anna 2001
    add_user bert 2002
    grant 2001 anna
    grant 2002 bert
}

# For a command, in the machine: until a test makes that file.
# shellcheck disable=SC2034 # for those who source this
wait_for_go='while [ ! -e /run/go ]; do sleep 0.05; done'

reload_bus()
{
    "${machine[@]}" busctl --quiet call org.freedesktop.DBus /org/freedesktop/DBus org.freedesktop.DBus ReloadConfig
}

# everybody_may_send: the bus lets everything through; only the daemon itself says no.
everybody_may_send()
{
    rm -f "$machine_root"/etc/dbus-1/system.d/"$bus_name".*.conf
    cat >"$machine_root/etc/dbus-1/system.d/$bus_name.conf" <<CONFIG
<busconfig>
  <policy user="root"><allow own="$bus_name"/></policy>
  <policy context="default"><allow send_destination="$bus_name"/></policy>
</busconfig>
CONFIG
    reload_bus
}

# polkit_rule JAVASCRIPT: what polkit answers, before its defaults.
polkit_rule()
{
    mkdir -p "$machine_root/etc/polkit-1/rules.d"
    echo "polkit.addRule(function(action, subject) {
        if (action.id == 'com.zelmor.velqdemon.run-shell') { $1 } });" >"$machine_root/etc/polkit-1/rules.d/10-test.rules"
    chmod 755 "$machine_root/etc/polkit-1/rules.d"
    "${machine[@]}" systemctl restart polkit.service
}

# as UID COMMAND...: outside any session.
as()
{
    "${machine[@]}" setpriv --reuid "$1" --regid "$1" --clear-groups "${@:2}"
}

# in_machine SCRIPT WORDS...: one of the Python programs beside the tests, by root.
in_machine()
{
    as 0 /usr/bin/python3 "$BATS_TEST_DIRNAME/daemon/$1" "${@:2}"
}

no_polkit()
{
    "${machine[@]}" systemctl --quiet mask --now polkit.service
}

# One that answers as daemon/polkit.py says; the process is called polkit.
fake_polkit()
{
    no_polkit
    start polkit "${machine[@]}" /usr/bin/python3 "$BATS_TEST_DIRNAME/daemon/polkit.py"
    expect_line polkit '^ready$'
}

# run_shell LINE: by root.
run_shell()
{
    "${machine[@]}" busctl --timeout=100 call -- "$bus_name" /VelqDamonObject "$bus_name" runShell sas /bin/sh 2 -c "$1"
}

# The daemon's process, or 0.
daemon_pid()
{
    "${machine[@]}" systemctl show -P MainPID "$unit"
}

# records FIELD=VALUE...: the journal's of the daemon, one JSON object a line.
records()
{
    "${machine[@]}" journalctl --sync
    "${machine[@]}" journalctl --quiet --output=json MESSAGE_ID=6b0f5e1f2d8a4c0c9a37d1e4b8c25f93 "$@"
}

has_record()
{
    [[ -n $(records "$@") ]]
}

# expect_record FIELD=VALUE...: some time soon, as the answer goes before it.
expect_record()
{
    until_true has_record "$@"
}

expect_no_sanitizer_report()
{
    if compgen -G "$machine_root/var/log/velq-sanitizer*" >/dev/null; then
        complain "$(cat "$machine_root"/var/log/velq-sanitizer*)"
    fi
}
