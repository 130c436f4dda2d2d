#!/usr/bin/env bats
# shellcheck disable=SC2016,SC2119 # what root's shell expands; no options for the machine
# The administrator prompt, the installation and the daemon in a booted machine, all of them the real ones; the test is
# the person in front of the screen.

bats_require_minimum_version 1.5.0
source "$BATS_TEST_DIRNAME/../../support/machine.bash"
source "$BATS_TEST_DIRNAME/../../support/rootdaemon.bash"

app='/opt/My Velq.app'
places=(/etc /usr /run/velq-install)

setup()
{
    need_machine
    boot_machine
    add_user person 4001
    "${machine[@]}" usermod --append --groups sudo person
    echo person:secret | "${machine[@]}" chpasswd
    make_bundle "$app" "${machine[@]}"
    clean=$(our_files)
}

teardown()
{
    stop_machine
    stop_everything
}

our_files()
{
    "${machine[@]}" find "${places[@]}" -xdev -iname '*velq*' 2>/dev/null | sort
}

nothing_is_left()
{
    [[ $(our_files) == "$clean" ]] || complain "left: $(our_files)"
    ! "${machine[@]}" busctl --system list --activatable | grep -i velq || complain 'the name can still be activated'
    ! "${machine[@]}" systemctl cat com.zelmor.VelqDemon.service 2>/dev/null || complain 'the unit is still there'
    ! "${machine[@]}" ls -A /home/person/Library/Caches 2>/dev/null | grep . || complain 'something is still staged'
}

# start_person ANSWER [USER [WORDS...]]: a program at that person's seat, who gives this answer to every prompt.
start_person()
{
    local answer=$1 user=${2:-person}
    shift
    [[ $# == 0 ]] || shift
    start_told person at_seat "$user" "$VELQ_SOURCE/tests/support/polkit-agent" "$answer" "$@" \
        "$app/Contents/MacOS/privileged_shell"
}

stop_person()
{
    exec {told}>&-
    kill "${pids[person]}" 2>/dev/null || true
    wait_for person
    rm "$here/person.in" "$here/person.out"
}

@test "allowed: installed, run as root from then on, and removed" {
    start_person secret
    tell person 'echo early >/run/early' '^asked$'
    expect_line person '^null$'
    [[ $("${machine[@]}" cat /run/early) == early ]]
    tell person 'id -u' '^output: 0$'
    tell person 'command -v route' '^output: /usr/libexec/velq/nettools/route$'
    tell person remove '^asked$'
    expect_line person '^done$'
    nothing_is_left
}

@test "dismissed: asked again the next time, nothing changed" {
    start_person --dismiss
    tell person 'id -u' '^asked$'
    expect_line person '^null$'
    tell person 'id -u' '^asked$'
    expect_line person '^null$'
    tell person install '^asked$'
    expect_line person '^YES$'
    tell person remove '^asked$'
    expect_line person '^cancelled$'
    nothing_is_left
}

@test "a wrong password, and an agent that gives up: failed, not asked again" {
    local answer
    for answer in wrong --give-up; do
        start_person "$answer"
        tell person 'id -u' '^asked$'
        expect_line person '^null$'
        tell person 'id -u' '^null$'
        tell person remove '^asked$'
        expect_line person '^failed: .*Not authorized'
        nothing_is_left
        stop_person
    done
}

@test "nobody who could ask: failed, not asked again" {
    start_told person at_seat person "$app/Contents/MacOS/privileged_shell"
    tell person 'id -u' '^null$'
    tell person 'id -u' '^null$'
    tell person remove '^failed: .*No authentication agent'
    nothing_is_left
}

@test "the script fails with the statuses of the prompt: failed" {
    local status
    start_person secret
    for status in 126 127; do
        printf '#!/bin/sh\nexit %s\n' "$status" | "${machine[@]}" tee /usr/sbin/mkdir >/dev/null
        "${machine[@]}" chmod +x /usr/sbin/mkdir
        tell person install '^asked$'
        expect_line person '^NO$'
    done
    "${machine[@]}" rm /usr/sbin/mkdir
    nothing_is_left
}

@test "away from the screen: asked before each command" {
    start_person secret
    tell person install '^asked$'
    expect_line person '^NO$'
    stop_person
    start_told person from_afar person "$VELQ_SOURCE/tests/support/polkit-agent" secret "$app/Contents/MacOS/privileged_shell"
    tell person 'id -u' '^asked$'
    expect_line person '^output: 0$'
    tell person 'id -u' '^asked$'
    expect_line person '^output: 0$'
}

@test "a shell and a language that the prompt dislikes do not keep it away" {
    start_person secret person env SHELL=/opt/no/shell LC_ALL=../../odd LANG=%n TERM=/x
    tell person install '^asked$'
    expect_line person '^NO$'
    tell person 'id -u' '^output: 0$'
}

@test "removed while a command runs: it ends, and nothing is left" {
    start_person secret
    tell person install '^asked$'
    expect_line person '^NO$'
    start other at_seat person sh -c "echo 'echo on >/run/on; sleep infinity' | '$app/Contents/MacOS/privileged_shell'"
    until_true "${machine[@]}" test -e /run/on
    tell person remove '^asked$'
    expect_line person '^done$'
    expect_line other '^null$'
    nothing_is_left
    until_true nothing_sleeps
}

# What was killed takes its time to be gone.
nothing_sleeps()
{
    ! "${machine[@]}" pgrep -f 'sleep infinity' -U 0
}

@test "an upgrade: the old daemon does not go on answering" {
    start_person secret
    tell person install '^asked$'
    expect_line person '^NO$'
    tell person 'echo $PPID' '^output: '
    "${machine[@]}" sh -c 'cd /usr/libexec/velq; cp -p VelqDemon older; echo >>older; mv older VelqDemon'
    local before
    before=$("${machine[@]}" systemctl show --property MainPID com.zelmor.VelqDemon.service)
    tell person install '^asked$'
    expect_line person '^NO$'
    tell person 'id -u' '^output: 0$'
    [[ $("${machine[@]}" systemctl show --property MainPID com.zelmor.VelqDemon.service) != "$before" ]]
}

@test "a second person: shut out before, served after, and alone after the first has gone" {
    add_user other 4002
    "${machine[@]}" usermod --append --groups sudo other
    echo other:secret | "${machine[@]}" chpasswd
    start_person secret
    tell person install '^asked$'
    expect_line person '^NO$'
    stop_person
    start_person --dismiss other
    tell person 'id -u' '^asked$'
    expect_line person '^null$'
    stop_person
    start_person secret other
    tell person install '^asked$'
    expect_line person '^NO$'
    tell person 'id -u' '^output: 0$'
    stop_person
    start_person secret
    tell person 'id -u' '^output: 0$'
    tell person remove '^asked$'
    expect_line person '^done$'
    stop_person
    start_person --dismiss
    tell person 'id -u' '^asked$'
    expect_line person '^null$'
    stop_person
    start_person secret other
    tell person 'id -u' '^output: 0$'
    tell person remove '^asked$'
    expect_line person '^done$'
    nothing_is_left
}
