#!/usr/bin/env bats
# A polkit that is slow, dead, or talks nonsense: the root daemon says no, and does not wait longer than it must.

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

# ask PROGRAM OUTCOME LEAST MOST: the milliseconds that the answer takes. It may take longer now and then, on a busy
# machine, but not each time.
ask()
{
    local outcome took
    for _ in {1..5}; do
        read -r outcome took < <(in_machine asking.py one "$1")
        [[ $outcome == "$2" && $took -ge $3 ]] || complain "$1: $outcome after $took ms" || return
        ((took > $4)) || return 0
    done
    complain "$1: $outcome after $took ms"
}

@test "polkit is asked about the caller's bus name, and no person" {
    fake_polkit
    ask true served 0 20000
    expect_line polkit '^asked system-bus-name com\.zelmor\.velqdemon\.run-shell true 0 False$'
}

@test "without polkit nobody is served" {
    no_polkit
    ask true NotAuthorized 0 4500
}

@test "nor with one that says no, fails, dies, or wants a proof" {
    fake_polkit
    ask false NotAuthorized 0 4500
    ask stat NotAuthorized 0 4500
    ask sum NotAuthorized 0 4500
    ask kill NotAuthorized 0 4500
}

@test "nor with one that never answers, which takes five seconds" {
    fake_polkit
    ask sleep NotAuthorized 4900 7500
}

@test "nor with one that answers something else" {
    no_polkit
    start polkit "${machine[@]}" setpriv --reuid polkitd /usr/bin/python3 "$BATS_TEST_DIRNAME/daemon/garbage.py"
    expect_line polkit '^ready$'
    for program in true echo cat ls id; do
        ask "$program" NotAuthorized 0 7500
    done
}

@test "while one waits for polkit, others are served" {
    fake_polkit
    run in_machine asking.py others
    [[ ${lines[0]} == 'others served' && ${lines[1]} == 'slow NotAuthorized' ]]
}

@test "one person's questions to a polkit that does not answer leave room for another's" {
    fake_polkit
    add_two_people
    run in_machine fair.py 14 12 /usr/bin/sleep
    echo "$output"
    [[ ${lines[0]} == 'the other: served' && ${lines[1]} == 'the first: 12 NotAuthorized' ]]
}

@test "polkit gets sixteen questions at a time, whoever they are about" {
    fake_polkit
    add_two_people
    # All of them, before it has not answered the first for five seconds.
    until_true sixteen_are_asked
}

sixteen_are_asked()
{
    [[ $(in_machine asking.py together 12) == '8 Busy 16 NotAuthorized' ]]
}

@test "one person gets sixty commands at once, then twenty a second" {
    fake_polkit
    run in_machine asking.py pressed
    [[ $output == 'as many as there may be' ]] || complain "$output"
}

@test "calls that wait for polkit side by side keep their own words" {
    fake_polkit
    run in_machine asking.py second
    [[ $output == 'own words' ]]
}

@test "a caller that leaves at once has nothing run" {
    fake_polkit
    run_shell true
    for _ in $(seq 20); do
        in_machine asking.py leaves tee /run/left
    done
    expect_record VELQ_PATH=/usr/bin/tee VELQ_VERDICT=NotAuthorized
    [[ ! -e $machine_root/run/left ]]
}

@test "nor has one that leaves before polkit answers" {
    fake_polkit
    open_stream stdin
    input=$here/stdin.out start asking "${machine[@]}" \
        /usr/bin/python3 "$BATS_TEST_DIRNAME/daemon/asking.py" leaves tee /run/left slowly
    await_line polkit ' tee 0 False$'
    echo >"$here/stdin.out"
    wait_for asking
    expect_record VELQ_REASON='the caller has left'
    [[ ! -e $machine_root/run/left ]]
}

@test "nor has one that leaves while its call waits for a place" {
    local number
    fake_polkit
    add_two_people
    # All that one person may have at once.
    for number in 1 2 3; do
        start "call$number" "${machine[@]}" busctl --timeout=100 call -- \
            "$bus_name" /VelqDamonObject "$bus_name" runShell sas /bin/sh 2 -c "$wait_for_go"
    done
    for number in 1 2 3; do
        await_line polkit ' sh 0 False$'
    done
    open_stream stdin
    input=$here/stdin.out start asking "${machine[@]}" \
        /usr/bin/python3 "$BATS_TEST_DIRNAME/daemon/asking.py" leaves touch /run/left slowly
    await_line polkit ' touch 0 False$'
    # The same polkit takes as long over another's, and so has answered both then.
    as 2001 /usr/bin/python3 "$BATS_TEST_DIRNAME/daemon/asking.py" one printf
    echo >"$here/stdin.out"
    wait_for asking
    # Who is answered after that finds a daemon that has heard of it.
    as 2001 /usr/bin/python3 "$BATS_TEST_DIRNAME/daemon/asking.py" one true
    touch "$machine_root/run/go"
    expect_record VELQ_REASON='the caller has left'
    [[ ! -e $machine_root/run/left ]]
}

@test "where the caller allows it, a person is asked" {
    fake_polkit
    [[ $(in_machine asking.py person sum) == served ]]
    expect_line polkit ' sum 0 False$'
    expect_line polkit ' sum 1 True$'
}

@test "the question to a person is taken back when the caller leaves" {
    fake_polkit
    open_stream stdin
    input=$here/stdin.out start asking "${machine[@]}" /usr/bin/python3 "$BATS_TEST_DIRNAME/daemon/asking.py" person_leaves
    await_line polkit ' yes 1 True$'
    echo >"$here/stdin.out"
    expect_line polkit '^cancelled$'
}
