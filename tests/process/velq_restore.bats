#!/usr/bin/env bats
# velq restore: what root is asked to do, and what is told of it. The tools and the root daemon are the test's own.

source "$BATS_TEST_DIRNAME/../support/velq.bash"
source "$BATS_TEST_DIRNAME/../support/madeupmanager.bash"

setup()
{
    make_velq
    fake_ports 'Ethernet|lan0|02:00:00:00:00:07|Enabled|active' "Joe's|lan1|02:00:00:00:00:08|Enabled|active" \
        'Loopback|lo|00:00:00:00:00:00|Enabled|inactive'
}

teardown()
{
    stop_everything
}

# expect_restore QUOTED: as Python writes it.
expect_restore()
{
    next_line daemon
    [[ $line == "runShell /bin/sh ['-c', \"networksetup -restore $1 2>&1 && echo restored\"]" ]] || complain "$line"
    expect_silence daemon 0.1
}

@test "the settings are back" {
    start_answering_daemon $'restored\n'
    ask restore Ethernet
    says 0 'The settings of Ethernet are as they were before Velq changed them.' 'Putting the settings of Ethernet back'
    expect_restore "'Ethernet'"
    ask --json restore lan0
    says_json 0 '{"service": "Ethernet", "restored": True, "message": None}'
    expect_restore "'Ethernet'"
}

@test "a name is nothing but a name to root's shell" {
    start_answering_daemon $'restored\n'
    ask restore "Joe's"
    [[ $status == 0 ]]
    expect_restore "'Joe'\\\\''s'"
}

@test "nothing has been changed" {
    start_answering_daemon $'networksetup: nothing has been changed for Ethernet that could be taken back\n'
    ask restore Ethernet
    says 0 'Nothing to put back: Velq has changed none of the settings of Ethernet.' 'Putting the settings of Ethernet back'
    ask restore Ethernet --json
    says_json 0 '{"service": "Ethernet", "restored": False, "message": None}'
}

@test "what the tool has to say when it fails is told" {
    start_answering_daemon $'networksetup: the copy of the settings of Ethernet is damaged\n'
    ask restore Ethernet
    says 1 'The settings of Ethernet could not be put back: the copy of the settings of Ethernet is damaged.' \
        'Putting the settings of Ethernet back'
    ask restore Ethernet --json
    says_json 1 '{"service": "Ethernet", "restored": False, "message": "the copy of the settings of Ethernet is damaged"}'
}

@test "where nobody is asked for rights, or nobody gives them, it asks once and says what to do" {
    local ending
    # GCC 12's thread sanitizer no longer sees the locks of a thread that has forked, as the one that starts pkexec does,
    # and takes what the queue's lock orders for a race.
    [[ -z ${TSAN_OPTIONS:-} ]] || local -x TSAN_OPTIONS=$TSAN_OPTIONS:report_bugs=0
    for ending in 126 127; do
        fake pkexec "echo >>'$here/asked'; exit $ending"
        ask restore Ethernet
        [[ $status == 1 && $output == 'The settings of Ethernet could not be put back.' ]] || complain "$status: $output"
        [[ $errors == *'nothing could be changed as root'*'or with sudo.' ]] || complain "$errors"
        [[ $(wc -l <"$here/asked") == 1 ]]
        rm "$here/asked"
    done
}

@test "a service that there is not is refused, and nobody is asked" {
    start_answering_daemon $'restored\n'
    ask restore eth0
    says 2 '' "velq: there is no service 'eth0'; velq services lists those that there are"$'\n''usage: velq restore SERVICE [--json] [--help]'
    ask restore
    says 2 '' 'velq: which SERVICE?'$'\n''usage: velq restore SERVICE [--json] [--help]'
    expect_silence daemon 0.1
}

# Each service has one thing that is another the second time: how it gets its address, the address itself, its name
# servers, its MTU.
fake_changes()
{
    mkdir "$here/told"
    fake networksetup "case \$1 in
-listallhardwareports) cat '$here/ports' ;;
-listallnetworkservices) printf 'An asterisk.\n*Ethernet\nLAN-lan2\nWi-Fi\nJoe%ss\n' \"'\" ;;
-getinfo | -getdnsservers | -getMTU)
    if mkdir \"$here/told/\$*\" 2>/dev/null; then number=1; else number=2; fi
    case \$*:\$number in
    '-getinfo Ethernet:2') echo 'DHCP Configuration' ;;
    '-getinfo LAN-lan2:2') printf 'Manual Configuration\nIP address: 192.0.2.9\n' ;;
    '-getdnsservers Wi-Fi:2') echo 8.8.8.8 ;;
    \"-getMTU Joe's:2\") echo 'Active MTU: 1400 (Current Setting: 1400)' ;;
    -getinfo*) printf 'Manual Configuration\nIP address: 192.0.2.7\n' ;;
    *) echo none ;;
    esac ;;
esac"
}

@test "what a repair has changed for nothing is named, with the way back" {
    need_made_up_manager
    start_fake_daemon
    fake_changes
    ask repair
    [[ $status == 1 && $output != *'velq restore'* ]] || complain "$output"
    rm -r "$here/told"
    fake_changes
    start_network_manager
    ask repair
    says 1 $'There still is no network connection.\nTo find out why, try velq diagnose.\nTo put back the settings that were changed: velq restore Ethernet && velq restore \'Joe\'\\\'\'s\' && velq restore Wi-Fi' \
        'Repairing the connection'
}
