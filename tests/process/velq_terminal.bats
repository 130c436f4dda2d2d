#!/usr/bin/env bats
# velq diagnose at a terminal: questions and their answers, progress, and how it is stopped.

source "$BATS_TEST_DIRNAME/../support/brokenchain.bash"
source "$BATS_TEST_DIRNAME/../support/terminal.bash"

setup()
{
    need script
    make_velq
    make_chain
    make_keyboard
}

teardown()
{
    stop_everything
}

# diagnose_at_terminal OPTIONS...: the first shell of the terminal is the program itself.
diagnose_at_terminal()
{
    local line
    printf -v line '%q ' exec "${surroundings[@]}" "$program" diagnose "$@"
    start_terminal "$line"
}

# ends_with STATUS
ends_with()
{
    wait_for terminal
    [[ $status == "$1" ]] || complain "it ended with $status; $(report terminal)"
}

await_router_question()
{
    await_line terminal 'The IP address of router is abnormal\.'
    expect_line terminal '^Please check the settings of your router or contact ISP\.'
    expect_line terminal '^  1  OK'
    expect_line terminal '^  2  Feedback'
}

await_proxy_question()
{
    await_line terminal $'You need to close\u00a0proxy first, if you want to repair this problem\.'
    expect_line terminal '^You can turn on proxy server again when you need\.'
    expect_line terminal '^  1  Close proxy to finish the repair'
    expect_line terminal '^  2  Ignore proxy settings'
}

# The program that the terminal shows.
velq_pid()
{
    pgrep -P "${pids[terminal]}" -x velq
}

@test "Return answers by the first button" {
    diagnose_at_terminal
    await_router_question
    type_text '\n'
    await_line terminal '^1 problem \(bits: 65536; told: none\)\.'
    ends_with 1
}

@test "a button's number answers, and what is no number asks again" {
    start_fake_daemon
    use_proxy
    diagnose_at_terminal --repair
    await_proxy_question
    type_text '0\n3\ntwo\n2\n'
    await_line terminal '^(Which one, 1 to 2\? \[1\] ){4}[^W]'
    await_line terminal '^After the repair:'
    await_line terminal '^No problems but ignored ones \(bits: 4096; told: 4096, 4096\)\.'
    ends_with 1
    expect_silence daemon 0.1
}

@test "the end of the input answers by the first button" {
    start_fake_daemon
    use_proxy
    answer_later
    diagnose_at_terminal --repair
    await_proxy_question
    type_text '\x04'
    await_line terminal '^No problems\.'
    ends_with 0
    expect_line daemon "'networksetup -setwebproxystate Wi-Fi off'"
}

@test "what was typed before a question does not answer it" {
    fake xdg-open "echo >'$here/page.out'"
    open_stream page
    fake ping "read -r line <'$here/go.out'; exit 1"
    open_stream go
    diagnose_at_terminal
    await_line tools '^ping '
    type_text '2\n'
    await_typed 2
    echo go >"$here/go.out"
    await_router_question
    type_text '1\n'
    await_line terminal '^(Which one, 1 to 2\? \[1\] )[^W]'
    ends_with 1
    expect_silence page 0.3
}

# await_typed COUNT: so many characters are there to be read on the terminal.
await_typed()
{
    python3 - "/proc/$(velq_pid)/fd/0" "$1" "$patience" <<'WAIT'
import array, fcntl, os, sys, termios, time
terminal = os.open(sys.argv[1], os.O_RDONLY | os.O_NOCTTY)
count = array.array("i", [0])
end = time.monotonic() + float(sys.argv[3])
while count[0] < int(sys.argv[2]):
    assert time.monotonic() < end, "nothing arrived"
    time.sleep(0.01)
    fcntl.ioctl(terminal, termios.FIONREAD, count)
WAIT
}

@test "a program's caller is asked nothing, at a terminal either" {
    diagnose_at_terminal --json
    await_line terminal '"errorStatus": 65536'
    ends_with 1
    ! grep -E 'router|Diagnosing' "$here/terminal.lines" || false
}

@test "at a question, Ctrl-C ends it with nothing done" {
    start_fake_daemon
    use_proxy
    diagnose_at_terminal --repair
    await_proxy_question
    type_text '\x03'
    await_line terminal 'velq: interrupted'
    ends_with 130
    expect_silence daemon 0.1
    ask ignore NetworkKey4
    says 0 'NetworkKey4 (Diagnose Proxy problem) is not ignored any more.'
}

@test "the seconds are counted while it waits, and taken away" {
    local begun=$EPOCHREALTIME
    fake ping "read -r line <'$here/go.out'; echo 'time=1'"
    open_stream go
    diagnose_at_terminal
    await_line terminal '^Diagnosing the connection'
    # The next two are parts of a line that is written over.
    IFS= read -r -d s -t "$patience" -u "${outputs[terminal]}" line
    [[ $line =~ ^$'\r'([1-9][0-9]*)' '$ ]] || complain "$line"
    ((BASH_REMATCH[1] * 1000 <= $(milliseconds_since "$begun") + 500)) || complain "$line"
    echo go >"$here/go.out"
    await_line terminal $'\r *\rEthernet & Wi-Fi Connectivity'
    await_line terminal '^No problems\.'
    ends_with 0
}

@test "Ctrl-C stops the scan and tells how far it came" {
    fake nslookup "read -r line <'$here/go.out'; echo 'no servers'; echo lived >'$here/tool.out'"
    open_stream go
    open_stream tool
    diagnose_at_terminal --repair
    await_line tools '^nslookup '
    type_text '\x03'
    await_line terminal 'velq: stopping; to end at once, interrupt it again'
    echo go >"$here/go.out"
    expect_line tool '^lived$'
    expect_line terminal 'Ethernet & Wi-Fi Connectivity'
    expect_line terminal '^    Normal: Network card connected'
    expect_line terminal '^Diagnose IP problem'
    expect_line terminal '^    Normal: Obtained IP successfully'
    expect_line terminal '^Diagnose DNS problem'
    expect_line terminal '^    not checked'
    expect_line terminal '^Diagnose Proxy problem'
    expect_line terminal '^    not checked'
    expect_line terminal '^Stopped before the scan was over\.'
    ends_with 130
}

# start_alone [OPTIONS...]: without a terminal, so that only the program gets the signals.
start_alone()
{
    start velq "${inside[@]}" "${tied[@]}" "${surroundings[@]}" "$program" diagnose "$@"
}

@test "a signal stops the scan after the tool in hand, with half an answer for nobody" {
    fake ping "read -r line <'$here/go.out'; exit 1"
    open_stream go
    start_alone --json
    await_line tools '^ping '
    kill -TERM "${pids[velq]}"
    await_error velq 'velq: stopping; to end at once, interrupt it again'
    echo go >"$here/go.out"
    wait_for velq
    [[ $status == 143 ]]
    expect_silence velq 0.1
    expect_no_tool
}

@test "the second signal ends it at once" {
    fake ping "read -r line <'$here/go.out'; exit 1"
    open_stream go
    start_alone
    await_line tools '^ping '
    kill -INT "${pids[velq]}"
    await_error velq 'velq: stopping; to end at once, interrupt it again'
    kill -INT "${pids[velq]}"
    wait_for velq
    [[ $status == 130 && $(<"$here/velq.err") == *'velq: interrupted' ]]
    expect_silence velq 0.1
    echo go >"$here/go.out"
}

@test "a signal stops the repair before its next step" {
    start_fake_daemon
    break_link
    start_alone --repair
    expect_line daemon 'setnetworkserviceenabled Ethernet on'
    expect_line daemon 'setnetworkserviceenabled Wi-Fi on'
    kill -INT "${pids[velq]}"
    wait_for velq
    [[ $status == 130 ]]
    await_line velq '^1 problem \(bits: 1; told: 1\)\.$'
    await_line velq '^Stopped before the repair was over\.$'
    expect_silence velq 0.1
}

# await_error NAME TEXT: on its standard error.
await_error()
{
    local deadline=$((EPOCHSECONDS + patience))
    until grep -qF "$2" "$here/$1.err"; do
        ((EPOCHSECONDS < deadline)) || complain "$1 never said '$2'"
    done
}
