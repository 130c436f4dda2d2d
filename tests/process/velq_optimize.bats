#!/usr/bin/env bats
# velq optimize and velq accelerate: what they find, say and speed up. The tools and the root daemon are the test's own.

source "$BATS_TEST_DIRNAME/../support/velq.bash"

setup()
{
    make_velq
    fake_ports 'Ethernet|lan0|02:00:00:00:00:07|Enabled|active' 'Wi-Fi|lan1|02:00:00:00:00:08|Enabled|active' \
        'USB|usb0|02:00:00:00:00:09|Enabled|inactive' 'Loopback|lo|00:00:00:00:00:00|Enabled|inactive'
    fake ping 'echo time=1'
    fake route 'echo "interface: lan0"'
    fake defaults 'echo 0.25'
    set_device lan0 1500
    set_device lan1 1500
}

teardown()
{
    stop_everything
}

# set_device NAME MTU
set_device()
{
    printf '%s: flags mtu %s\n\tinet 192.0.2.7\n\tstatus: active\n' "$1" "$2" >"$here/links/$1"
}

# finds STATUS VALUES...: what the last JSON holds as its errorStatus, issueCount, delegate, and the items' issues.
finds()
{
    local wanted=$1
    shift
    [[ $status == "$wanted" && $errors == '' ]] || complain "it ended with $status: $errors"
    python3 -c 'import json, sys
value = json.load(open(sys.argv[1]))
found = [value["errorStatus"], value["issueCount"], value["delegate"], [item["issue"] for item in value["items"]]]
sys.exit(str(found) != sys.argv[2] and str(found))' "$here/output" "$*"
}

expect_root()
{
    expect_line daemon "^runShell /bin/sh \\['-c', [\"']$1[\"']\\]$"
}

@test "a card cache that was never flushed is all that a fine computer has" {
    ask optimize
    [[ $status == 1 && $errors == $'Looking at the network\nLooking for what slows the connection down' ]] \
        || complain "$status: $errors"
    [[ $output == 'Optimize Network Card Priority
    Good: Your network runs at its top performance
Optimize'$'\u00a0''MTU Detection
    Good: The MTU is set reasonably.
Flush Ethernet Cards Cache
  ! Recommend to flush: Too many Network card caches, which may slow down your surfing speed.
Optimize & Protect'$'\u00a0''DNS
    Connectivity: Good: All is good. Please enjoy smooth surfing.
1 problem (bits: 256; told: 256).' ]] || complain "$output"
    ask optimize --json
    finds 1 '[256, 1, [256], [0, 0, 1, 0]]'
}

@test "an optimization is found, sped up as root, and looked at again" {
    start_fake_daemon
    fake route 'echo "interface: lan1"'
    set_device lan1 1492
    fake ping 'case $* in *kernel*) echo Request timeout ;; *) echo time=1 ;; esac'
    ask optimize
    [[ ${output##*$'\n'} == 'To change that: velq optimize --speedup' ]] || complain "$output"
    ask optimize --speedup --json
    finds 1 '[4369, 4, [1, 16, 256, 4096, 1, 16, 256, 4096], [1, 1, 1, 1]]'
    expect_root 'sudo networksetup -ordernetworkservices Ethernet Wi-Fi USB'
    expect_root 'networksetup -setMTU lan1 1500'
    expect_root 'sudo networksetup -setdnsservers Wi-Fi 8\.8\.8\.8'
    expect_silence daemon 0.1
}

@test "an acceleration that is on" {
    start_answering_daemon $'192.0.2.10  accelerated.velq.example\n'
    ask accelerate --speedup
    [[ $status == 0 && $errors == 'Looking at the applications' ]] || complain "$status: $errors"
    [[ $output == 'Safari
    Host acceleration: On
iCloud
    Host acceleration: On
iTunes
    Host acceleration: On
AppStore
    Host acceleration: On
No problems.' ]] || complain "$output"
    expect_root 'cat /etc/hosts\|grep accelerated\.velq\.example'
    expect_silence daemon 0.1
}

@test "an acceleration is found off, and switched on" {
    start_fake_daemon
    fake defaults 'echo 0.5'
    ask accelerate
    [[ ${output##*$'\n'} == 'To change that: velq accelerate --speedup' ]] || complain "$output"
    expect_root 'cat .*'
    ask accelerate --json
    finds 1 '[17, 4, [1, 16], [1, 1, 1, 1]]'
    expect_root 'cat .*'
    ask accelerate --json --speedup
    # The tools stay as they are, so it is found again: what came of the speed-up is looked at.
    finds 1 '[17, 4, [1, 16, 1, 16], [1, 1, 1, 1]]'
    expect_root 'cat .*'
    expect_root 'chmod 777 /etc/hosts'
    expect_root "sudo echo '192\\.0\\.2\\.10  accelerated\\.velq\\.example\\\\n198\\.51\\.100\\.10 accelerated\\.velq\\.example'>>/etc/hosts"
    expect_root 'cat .*'
    expect_silence daemon 0.1
}

@test "where nobody is asked for rights, it says so and what to do" {
    fake pkexec 'exit 127'
    ask accelerate --speedup
    [[ $status == 1 && $errors == *'nothing could be changed as root'*'or with sudo.' ]] || complain "$status: $errors"
}
