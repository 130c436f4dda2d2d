#!/usr/bin/env bats
# The root daemon under load, and what comes and goes around it.

source "$BATS_TEST_DIRNAME/../support/daemon.bash"

setup()
{
    boot_with_daemon
}

teardown()
{
    expect_no_sanitizer_report
    stop_machine
    stop_everything
}

is_daemon()
{
    [[ $(daemon_pid) == "$1" ]]
}

expect_served()
{
    [[ $(run_shell 'echo fine') == 's "fine\n"' ]]
}

start_call()
{
    start call "${machine[@]}" busctl --timeout=100 call -- \
        "$bus_name" /VelqDamonObject "$bus_name" runShell sas /bin/sh 2 -c "$1"
}

has_file()
{
    [[ -s $machine_root$1 ]]
}

# has_lines COUNT FILE
has_lines()
{
    has_file "$2" && [[ $(wc -l <"$machine_root$2") == "$1" ]]
}

# alive FILE: any of the machine's processes whose numbers stand in it.
alive()
{
    # shellcheck disable=SC2046
    "${machine[@]}" kill -0 $(cat "$machine_root$1") 2>/dev/null
}

none_alive()
{
    ! alive "$1"
}

@test "of a thousand calls at once some are served, the rest hears it is busy" {
    run_shell true
    local before served busy others
    before=$(daemon_pid)
    read -r served busy others < <(in_machine burst.py 1000)
    echo "$served served, $busy busy, $others"
    [[ $served -ge 12 && $((served + busy)) == 1000 && $others == '{}' ]]
    until_true expect_served
    is_daemon "$before"
}

@test "one person's commands are never the only ones, and leave places in the queue" {
    add_two_people
    polkit_rule 'return polkit.Result.YES;'
    run in_machine fair.py 18 15 /bin/sh -c "$wait_for_go"
    echo "$output"
    [[ ${lines[0]} == 'the other: served' && ${lines[1]} == 'the first: 15 served' ]]
}

# are_running COUNT: so many commands, each of which has a child of the daemon's to itself.
are_running()
{
    local pid
    pid=$(daemon_pid)
    [[ $("${machine[@]}" cat "/proc/$pid/task/$pid/children" | wc -w) == "$1" ]]
}

@test "four commands run at a time and sixteen wait, of all people together" {
    add_two_people
    polkit_rule 'return polkit.Result.YES;'
    start full in_machine full.py 30 20 /bin/sh -c "$wait_for_go"
    expect_line full '^full$'
    # Polkit answers for each of them in its own time.
    until_true are_running 4
    pause 0.5
    are_running 4
    touch "$machine_root/run/go"
    expect_line full '^30 served$'
}

@test "what a command prints that is no text comes whole, be it all that it may print" {
    run in_machine marks.py
    [[ $output == marked ]] || complain "$output"
    expect_record VELQ_VERDICT=Served VELQ_BYTES=25165824
}

@test "a command outlives its caller and is run to its end" {
    start_call 'echo begun >/run/begun; sleep 1; echo ended >/run/ended'
    until_true has_file /run/begun
    kill -KILL "${pids[call]}"
    until_true has_file /run/ended
    expect_served
}

@test "a daemon that is killed takes its commands along, and the next call has another one" {
    local start
    start_call 'trap "" TERM; setsid sh -c "trap : TERM; echo \$\$ >>/run/pids; while :; do sleep 100; done" &
        echo $$ >>/run/pids; while :; do sleep 100; done'
    until_true has_lines 2 /run/pids
    start=$EPOCHREALTIME
    "${machine[@]}" kill -KILL "$(daemon_pid)"
    wait_for call
    [[ $status != 0 && $(milliseconds_since "$start") -lt 3000 ]]
    expect_served
    until_true none_alive /run/pids
}

@test "what a command left behind lives on, though the daemon leaves" {
    daemon_options --idle 0.3
    run_shell 'sleep 1000 >/dev/null 2>&1 & echo $! >/run/left'
    until_true is_daemon 0
    alive /run/left
}

@test "a command that hangs is ended at the limit" {
    # Long enough for both to come to write.
    daemon_options --limit 5
    run ! run_shell '(setsid sh -c "trap : TERM; echo \$\$ >>/run/pids; while :; do sleep 100; done" &)
        echo $$ >>/run/pids; sleep 100'
    [[ $output == *'took too long'* ]]
    [[ $(wc -l <"$machine_root/run/pids") == 2 ]]
    until_true none_alive /run/pids
    expect_record VELQ_VERDICT=Timeout
}

@test "systemd's word to stop ends it at once" {
    run_shell true
    start_call 'echo $$ >/run/pids; sleep 1000'
    until_true has_file /run/pids
    "${machine[@]}" systemctl stop "$unit"
    wait_for call
    until_true none_alive /run/pids
    [[ $("${machine[@]}" systemctl show -P Result "$unit") == success ]]
    expect_served
}

@test "it leaves with its bus, and comes back with the next one" {
    run_shell true
    "${machine[@]}" systemctl kill --signal=KILL dbus.service
    until_true is_daemon 0
    until_true expect_served
}

@test "no call is lost while it leaves for being idle" {
    daemon_options --idle 0.02
    drop_in restarts <<UNIT
[Unit]
StartLimitIntervalSec=0
UNIT
    run in_machine idle.py 1000 0.02 1
    echo "$output"
    read -r lost daemons <<<"$output"
    [[ $lost == 0 && $daemons -gt 50 ]]
}

@test "it leaves after the time that it was given, not before" {
    local ended left
    daemon_options --idle 1
    # Whom it leaves behind looks when it does; who looks from outside may come too late.
    # shellcheck disable=SC2016 # the shell's own
    run_shell 'daemon=$(ps -o ppid= $PPID)
        (while kill -0 $daemon; do sleep 0.05; done; cut -d " " -f 1 /proc/uptime >/run/left) >/dev/null 2>&1 &
        sleep 2; cut -d " " -f 1 /proc/uptime >/run/ended'
    until_true has_file /run/left
    # In hundredths of a second.
    ended=$(tr -d . <"$machine_root/run/ended")
    left=$(tr -d . <"$machine_root/run/left")
    ((left - ended >= 100)) || complain "it ended at $ended, the daemon left at $left"
}

@test "a journal that hangs holds no call up" {
    "${machine[@]}" systemctl --quiet stop systemd-journald.socket systemd-journald-dev-log.socket \
        systemd-journald-audit.socket systemd-journald.service
    "${machine[@]}" sh -c 'echo 2 >/proc/sys/net/unix/max_dgram_qlen'
    "${machine[@]}" systemctl start systemd-journald.socket systemd-journald.service
    run_shell true
    "${machine[@]}" systemctl kill --signal=STOP systemd-journald.service
    for _ in $(seq 40); do
        once_within 1000 expect_served
    done
    "${machine[@]}" systemctl kill --signal=CONT systemd-journald.service
    # What it has read since makes room.
    until_true has_record_after_silence
}

has_record_after_silence()
{
    expect_served
    [[ $(records | grep -c VELQ_MISSING) -ge 1 ]]
}

@test "without a journal calls are served as well" {
    "${machine[@]}" systemctl --quiet stop systemd-journald.socket systemd-journald-dev-log.socket \
        systemd-journald-audit.socket systemd-journald.service
    expect_served
    expect_served
}

@test "where nothing can be written calls are served as well" {
    expect_served
    "${machine[@]}" mount -o remount,size=16M /run
    # What the machine's tree is written to.
    nsenter -t "${pids[machine]}" --mount mount -o remount,size=16M "$here/machine"
    # Until there is no room for a byte.
    run ! "${machine[@]}" sh -c 'cat /dev/zero >/run/full'
    run ! "${machine[@]}" sh -c 'cat /dev/zero >/var/full'
    run ! "${machine[@]}" sh -c 'echo >/run/more'
    run ! "${machine[@]}" sh -c 'echo >/var/more'
    expect_served
    # One that starts there, too.
    "${machine[@]}" systemctl kill --signal=KILL com.zelmor.VelqDemon.service
    until_true is_daemon 0
    expect_served
}

@test "what commands write is root's alone, and one that dies leaves no core" {
    # The daemon's own doing, not the unit's.
    drop_in umask <<UNIT
[Service]
UMask=0000
UNIT
    [[ $(run_shell 'umask; ulimit -c; ulimit -H -c') == 's "0077\n0\n0\n"' ]]
}

# are_recorded COUNT: calls that were served.
are_recorded()
{
    [[ $(records VELQ_VERDICT=Served | wc -l) == "$1" ]]
}

@test "each call has its record" {
    for _ in $(seq 50); do
        expect_served
    done
    until_true are_recorded 50
    run ! run_shell 'kill -9 $$'
    expect_record VELQ_VERDICT=SpawnFailed VELQ_REASON='ended by signal 9' VELQ_UID=0 VELQ_PATH=/bin/sh
}

@test "ten thousand calls leave nothing behind" {
    local uids before after
    mapfile -t uids < <(seq 2101 2115)
    for uid in "${uids[@]}"; do
        add_user "user$uid" "$uid"
        grant "$uid" "user$uid"
    done
    polkit_rule 'return polkit.Result.YES;'
    [[ $(in_machine soak.py 1500 "${uids[@]}") == 1500 ]]
    until_true are_running 0
    before=$(possessions)
    run in_machine soak.py 10005 "${uids[@]}"
    echo "$output"
    [[ $output == 10005 ]]
    until_true are_running 0
    after=$(possessions)
    echo "before: $before, after: $after"
    [[ ${before% *} == "${after% *}" ]]
    if ! is_sanitized; then
        ((${after##* } - ${before##* } <= 1024))
    fi
}

# Descriptors, threads, children, and kilobytes of memory.
possessions()
{
    local pid
    pid=$(daemon_pid)
    # shellcheck disable=SC2016
    "${machine[@]}" sh -c 'echo $(ls /proc/$1/fd | wc -l) $(ls /proc/$1/task | wc -l) \
        $(cat /proc/$1/task/$1/children | wc -w) $(awk "/^Rss/ { print \$2 }" /proc/$1/smaps_rollup)' sh "$pid"
}
