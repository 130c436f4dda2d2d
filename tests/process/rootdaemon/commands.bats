#!/usr/bin/env bats
# shellcheck disable=SC2016,SC2154 # the prompts' own variables; the libraries set the others
# A program that wants commands run as root: what it gets from the daemon, or from the lack of one. Bus and prompt are
# the test's own.

bats_require_minimum_version 1.5.0
source "$BATS_TEST_DIRNAME/../../support/rootdaemon.bash"

setup()
{
    [[ $EUID == 0 ]] || skip 'only root can be the root that answers'
    need dbus-daemon setpriv /usr/bin/python3
    app="$here/My Velq.app"
    home=$here/home
    make_bundle "$app"
    mkdir "$home" "$here/bin"
    start_bus system
    # Those who are not root come along here, too.
    chmod 711 "$BATS_RUN_TMPDIR" "$BATS_RUN_TMPDIR/test" "$here"
    export DBUS_SYSTEM_BUS_ADDRESS
    DBUS_SYSTEM_BUS_ADDRESS=$(bus_address system)
}

teardown()
{
    stop_everything
}

# prompt_ends SCRIPT: what stands for the system's prompt; its folder is in $0's.
prompt_ends()
{
    cat >"$here/bin/pkexec" <<PROMPT
#!/bin/sh
here=$here
home=$home
echo asked >>"\$here/prompts"
$1
PROMPT
    chmod +x "$here/bin/pkexec"
}

prompts()
{
    [[ ! -e $here/prompts ]] || wc -l <"$here/prompts"
}

start_person()
{
    start_told person "${tied[@]}" env PATH="$here/bin:$PATH" HOME="$home" "$@" "$app/Contents/MacOS/privileged_shell"
}

# start_daemon ANSWER...
start_daemon()
{
    start daemon "${tied[@]}" "$VELQ_SOURCE/tests/support/fake-root-daemon" "$@"
    expect_line daemon '^ready$'
}

# expect_log LINE: that, and nothing else, is on the person's standard error.
expect_log()
{
    [[ $(<"$here/person.err") == "$1" ]] || complain "on standard error: $(<"$here/person.err")"
}

nothing_is_staged()
{
    [[ -z $(find "$home/Library/Caches" -type f -o -type l) ]] || complain "$(find "$home/Library/Caches")"
}

@test "the daemon's answer is the command's output" {
    prompt_ends 'exit 1'
    start_daemon output 'as root'
    start_person
    tell person 'id -u' '^output: as root$'
    expect_line daemon "^runShell /bin/sh \['-c', 'id -u'\]$"
    tell person 'again' '^output: as root$'
    [[ -z $(prompts) ]]
    expect_log ''
}

@test "an empty answer is an answer" {
    start_daemon output ''
    start_person
    tell person 'true' '^output: $'
}

@test "a command that takes its time is waited for" {
    start_daemon late 'at last'
    start_person
    patience=100 tell person 'sleep 32' '^output: at last$'
    expect_log ''
}

@test "a command with a NUL in it is not sent: the bus would cut it there" {
    prompt_ends 'exit 1'
    start_daemon output 'as root'
    start_person
    printf 'rm -r /tmp/old\0er\n' >"$here/person.in"
    expect_line person '^null$'
    expect_log 'A command must not hold a NUL character'
    expect_silence daemon 0.1
    [[ -z $(prompts) ]]
}

@test "an error is logged in its own words, and the answer is none" {
    prompt_ends 'exit 1'
    start_daemon error 'It is not for you'
    start_person
    tell person 'id -u' '^null$'
    expect_log 'It is not for you'
    [[ -z $(prompts) ]]
}

@test "an error of many lines is logged as one" {
    start_daemon error $'one\ntwo\033[2J'
    start_person
    tell person 'id -u' '^null$'
    expect_log 'one two [2J'
}

@test "a daemon that is killed meanwhile: a line in the log at once, and no second try" {
    prompt_ends 'exit 1'
    start_person
    # A busy machine may hold up one of them.
    for _ in {1..5}; do
        dies_meanwhile
        ((took >= 1000)) || break
    done
    ((took < 1000))
    [[ -z $(prompts) ]]
}

# Each time with a line more. Sets took, in milliseconds.
dies_meanwhile()
{
    local lines asked
    lines=$(wc -l <"$here/person.err")
    rm -f "$here/daemon.out"
    start_daemon die
    asked=$EPOCHREALTIME
    tell person 'id -u' '^null$'
    took=$(milliseconds_since "$asked")
    expect_line daemon '^runShell'
    [[ $(wc -l <"$here/person.err") == $((lines + 1)) ]] || complain "$(<"$here/person.err")"
}

@test "a bus that breaks meanwhile: a line in the log, and the next one serves" {
    prompt_ends 'exit 126'
    start_daemon hang
    start_person
    echo 'id -u' >"$here/person.in"
    expect_line daemon '^runShell'
    stop system
    expect_line person '^null$'
    [[ $(wc -l <"$here/person.err") == 1 && -s $here/person.err ]]
    [[ -z $(prompts) ]]
    kill -KILL "${pids[daemon]}" 2>/dev/null || true
    rm "$here/system.out" "$here/daemon.out"
    start_bus system
    start_daemon output served
    tell person 'id -u' '^output: served$'
}

@test "a daemon that leaves when it is asked: the next one is" {
    start_daemon leave
    start next "${tied[@]}" "$VELQ_SOURCE/tests/support/fake-root-daemon" output 'by the next'
    expect_line next '^queued$'
    start_person
    tell person 'id -u' '^output: by the next$'
    expect_line daemon '^runShell'
    expect_log ''
}

@test "the name belongs to somebody who is not root: nothing is sent to them" {
    prompt_ends 'exit 126'
    start daemon "${tied[@]}" setpriv --reuid 65534 --regid 65534 --clear-groups \
        "$VELQ_SOURCE/tests/support/fake-root-daemon" output stolen
    expect_line daemon '^ready$'
    start_person
    tell person 'echo secret' '^null$'
    expect_silence daemon 1
    [[ $(prompts) == 1 ]]
}

@test "an object that does not answer the message is like none" {
    prompt_ends 'exit 126'
    start_daemon other
    start_person
    tell person 'id -u' '^null$'
    [[ $(prompts) == 1 ]]
    expect_silence daemon 1
}

@test "no bus is like no daemon" {
    prompt_ends 'exit 126'
    start_person DBUS_SYSTEM_BUS_ADDRESS="unix:path=$here/nowhere"
    tell person 'id -u' '^null$'
    [[ $(prompts) == 1 ]]
}

@test "dismissed: no output, and the next command asks again" {
    prompt_ends 'exit 126'
    start_person
    tell person 'id -u' '^null$'
    tell person 'id -u' '^null$'
    [[ $(prompts) == 2 ]]
    nothing_is_staged
    expect_log ''
}

@test "failed: a second's rest, one more try, and never a prompt again" {
    prompt_ends 'exit 127'
    start_person
    local asked=$EPOCHREALTIME
    tell person 'id -u' '^null$'
    (($(milliseconds_since "$asked") >= 1000))
    once_within 900 tell person 'id -u' '^null$'
    [[ $(prompts) == 1 ]]
    nothing_is_staged
    expect_log ''
}

@test "installed: the first command is run without an answer, later ones have theirs" {
    # It takes as long as the daemon to come.
    prompt_ends 'echo started; touch "$here/installed"; until [ -e "$here/go" ]; do sleep 0.05; done; exit 0'
    start_person
    echo 'id -u' >"$here/person.in"
    until_true test -e "$here/installed"
    start_daemon output now
    touch "$here/go"
    expect_line person '^null$'
    expect_line daemon "^runShell /bin/sh \['-c', 'id -u'\]$"
    tell person 'id -g' '^output: now$'
    expect_line daemon "^runShell /bin/sh \['-c', 'id -g'\]$"
    [[ $(prompts) == 1 ]]
}

@test "the script ends as a dismissed prompt does: that is a failure" {
    prompt_ends 'echo started; exit 126'
    start_person
    tell person install '^NO$'
}

@test "the prompt's outcomes: only the dismissed one is YES" {
    start_person
    local ending
    for ending in 'echo started' 'exit 127' 'echo started; exit 127' 'echo started; exit 1' 'kill -9 $$' 'exit 0'; do
        prompt_ends "$ending"
        tell person install '^NO$'
    done
    prompt_ends 'exit 126'
    tell person install '^YES$'
    nothing_is_staged
}

@test "a system without the prompt has failed" {
    start_told person "${tied[@]}" env PATH=/nowhere HOME="$home" "$app/Contents/MacOS/privileged_shell"
    tell person install '^NO$'
    nothing_is_staged
}

@test "signals that the program blocks can end what root runs" {
    # Its own: a shell's children have none blocked.
    prompt_ends 'while read -r name mask; do [ "$name" != SigBlk: ] || echo "$mask"; done </proc/$$/status >"$here/blocked"
        echo started'
    start_told person "${tied[@]}" --block-signal=TERM PATH="$here/bin:$PATH" HOME="$home" \
        "$app/Contents/MacOS/privileged_shell"
    tell person install '^NO$'
    [[ $(<"$here/blocked") == 0000000000000000 ]]
}

@test "what is staged, and how the script is asked for" {
    prompt_ends '
        for word; do echo "$word" >>"$here/words"; done
        env >"$here/environment"
        cp "$home/Library/Caches/"* "$here/bin/"
        read -r line; echo "$line" >"$here/input"
        echo started'
    start_person SHELL=/no/shell LC_ALL=../../odd LANG=%s TERM=/x
    tell person install '^NO$'
    cmp "$here/bin/VelqDemon" "$app/Contents/Resources/VelqDemon"
    cmp "$here/bin/com.zelmor.VelqDemon.plist" "$app/Contents/Resources/com.zelmor.VelqDemon.plist"
    [[ $(head -n 3 "$here/words") == $'--disable-internal-agent\n/bin/sh\n-c' ]]
    local digest
    digest=$(sha256sum <"$app/Contents/Resources/copy.sh")
    diff <(tail -n 5 "$here/words") - <<WORDS
velq-install
${digest%% *}
$app/Contents/Resources/copy.sh
$home/Library/Caches/VelqDemon
$home/Library/Caches/com.zelmor.VelqDemon.plist
WORDS
    run ! grep -vE '^(PATH|PWD|OLDPWD|_|SHLVL)=' "$here/environment"
    [[ ! -s $here/input || $(<"$here/input") == '' ]]
    nothing_is_staged
}

@test "a home folder with a blank in its path: its parts are words of their own" {
    local blanks="$here/my  home"
    mkdir "$blanks"
    prompt_ends 'for word; do echo "$word" >>"$here/words"; done; echo started; exit 1'
    start_person HOME="$blanks"
    tell person install '^NO$'
    diff <(tail -n 5 "$here/words") - <<WORDS
$app/Contents/Resources/copy.sh
$here/my
home/Library/Caches/VelqDemon
$here/my
home/Library/Caches/com.zelmor.VelqDemon.plist
WORDS
    [[ -z $(find "$blanks/Library/Caches" -type f) ]]
}

@test "what an earlier run left is replaced, a link not followed" {
    mkdir -p "$home/Library/Caches"
    head -c 9000000 /dev/zero >"$home/Library/Caches/VelqDemon"
    echo untouched >"$here/target"
    ln -s "$here/target" "$home/Library/Caches/com.zelmor.VelqDemon.plist"
    prompt_ends 'cp -P "$home/Library/Caches/"* "$here/bin/"'
    start_person
    tell person install '^NO$'
    cmp "$here/bin/VelqDemon" "$app/Contents/Resources/VelqDemon"
    cmp "$here/bin/com.zelmor.VelqDemon.plist" "$app/Contents/Resources/com.zelmor.VelqDemon.plist"
    [[ $(<"$here/target") == untouched ]]
    nothing_is_staged
}

@test "resources that are missing are a failure, and nothing more" {
    prompt_ends 'exit 127'
    rm -r "$app/Contents/Resources"
    start_person
    tell person install '^NO$'
    expect_log ''
}
