#!/usr/bin/env bats
# Random messages to the root daemon; VELQ_FUZZ_MESSAGES and VELQ_FUZZ_SEED make it more and others.

source "$BATS_TEST_DIRNAME/../support/daemon.bash"

messages=${VELQ_FUZZ_MESSAGES:-1500}
seed=${VELQ_FUZZ_SEED:-1}

setup()
{
    boot_with_daemon
    add_user anna 2001
    add_user bert 2002
    grant 2001 anna
    polkit_rule 'return polkit.Result.YES;'
    run_shell true
    daemon=$(daemon_pid)
}

teardown()
{
    stop_machine
    stop_everything
}

# fuzz UID REGEX: what that user throws at the daemon; the same one answers afterwards.
fuzz()
{
    run as "$1" /usr/bin/python3 "$BATS_TEST_DIRNAME/daemon/fuzz.py" "$seed" "$messages"
    echo "$output"
    [[ $status == 0 && $output =~ $2 ]]
    expect_no_sanitizer_report
    [[ $(daemon_pid) == "$daemon" ]]
    [[ $(run_shell 'echo fine') == 's "fine\n"' ]]
}

@test "from one who may" {
    fuzz 2001 "'BadArguments'"
    [[ $output == *"'served'"* ]]
}

@test "from one who may not" {
    everybody_may_send
    fuzz 2002 "'NotAuthorized'"
    [[ $output != *"'served'"* ]]
}

@test "from root, with a bus that lets everything through" {
    everybody_may_send
    fuzz 0 "'BadArguments'"
    [[ $output == *"'served'"* ]]
}
