#!/usr/bin/env bats
# velq diagnose, and the choices about it: what it finds, says and repairs. Each repair waits for the network for eight
# seconds, whatever it did.

source "$BATS_TEST_DIRNAME/../support/brokenchain.bash"

setup()
{
    make_velq
    make_chain
}

teardown()
{
    stop_everything
}

item_1='"title": "Ethernet & Wi-Fi Connectivity", "ignoreKey": "NetworkKey1", "noShowIgnore": True, "ignore": False,
    "des": "Check the connectivity condition and work status of Ethernet and Wi-Fi."'
item_2='"title": "Diagnose IP problem", "ignoreKey": "NetworkKey2", "noShowIgnore": True, "ignore": False,
    "des": "Your Mac may not connect to the Internet due to the failure of obtaining IP address begins with 169.254.xxx.xxx."'
item_3='"title": "Diagnose DNS problem", "ignoreKey": "NetworkKey3", "noShowIgnore": True, "ignore": False,
    "des": "When DNS server encounters problems, some domains may not be parsed and opened."'
item_4='"title": "Diagnose Proxy problem ", "ignoreKey": "NetworkKey4", "noShowIgnore": False,
    "des": "After setting HTTP proxy in browsers, some websites may not be accessed or respond slowly."'
unchecked='"issue": 0, "errorStatus": []'
good_1='"issue": 0, "errorStatus": [{"error": False, "name": "Normal", "des": "Network card connected"}]'
good_2='"issue": 0, "errorStatus": [{"error": False, "name": "Normal", "des": "Obtained IP successfully"}]'
good_3='"issue": 0, "errorStatus": [{"error": False, "name": "Normal", "des": "The current DNS server parsed domains successfully."}]'
good_4='"issue": 0, "errorStatus": [{"error": False, "name": "Normal", "des": "No proxy issues since no HTTP proxy used."}]'
bad_1='"issue": 1, "errorStatus": [{"error": True, "name": "Abnormal",
    "des": "Either the cable for Ethernet is not plugged in or the device at the other end is not responding."}]'
bad_3='"issue": 1, "errorStatus": [{"error": True, "name": "Abnormal",
    "des": "The current DNS server failed to parse. Please switch to the correct DNS server."}]'

# finds STATUS BITS ISSUES TOLD RESULT-1 .. RESULT-4 [IGNORED]: the object that came of the last ask.
finds()
{
    says_json "$1" "{'errorStatus': $2, 'issueCount': $3, 'delegate': [$4], 'items': [
        {$item_1, $5}, {$item_2, $6}, {$item_3, $7}, {$item_4, 'ignore': ${9:-False}, $8}]}"
}

@test "an internet that answers makes all normal" {
    fake ping 'echo "64 bytes: time=1 ms"'
    ask diagnose
    says 0 'Ethernet & Wi-Fi Connectivity
    Normal: Network card connected
Diagnose IP problem
    Normal: Obtained IP successfully
Diagnose DNS problem
    Normal: The current DNS server parsed domains successfully.
Diagnose Proxy problem
    Normal: No proxy issues since no HTTP proxy used.
No problems.' 'Diagnosing the connection'
    await_line tools '^ping -c2 '
    expect_no_tool
    ask diagnose --json --repair
    finds 0 0 0 '' "$good_1" "$good_2" "$good_3" "$good_4"
}

@test "no link" {
    break_link
    ask diagnose
    says 1 'Ethernet & Wi-Fi Connectivity
  ! Abnormal: Either the cable for Ethernet is not plugged in or the device at the other end is not responding.
Diagnose IP problem
    not checked
Diagnose DNS problem
    not checked
Diagnose Proxy problem
    not checked
1 problem (bits: 1; told: 1).
To try and repair that: velq diagnose --repair' 'Diagnosing the connection'
    ask diagnose --json
    finds 1 1 1 1 "$bad_1" "$unchecked" "$unchecked" "$unchecked"
}

@test "a wrong address" {
    break_address
    ask diagnose --json
    finds 1 16 1 16 "$good_1" '"issue": 1, "errorStatus": [{"error": True, "name": "Abnormal",
        "des": "The devices below failed to obtain IP Wi-Fi: 192.168.7.2"}]' "$unchecked" "$unchecked"
}

@test "name servers that do not answer" {
    break_name_servers
    ask diagnose --json
    finds 1 256 1 256 "$good_1" "$good_2" "$bad_3" "$unchecked"
}

@test "a proxy in use, which is a problem to who ignores it" {
    fake_services web
    ask diagnose --json
    finds 1 65536 1 '' "$good_1" '"issue": 1, "errorStatus": []' "$good_3" "$good_4"
    use_proxy
    ask diagnose --json
    finds 1 4096 0 4096 "$good_1" "$good_2" "$good_3" '"issue": 0, "errorStatus": [
        {"error": True, "name": "Abnormal", "des": "Please disable HTTP proxy."}]' True
    ask diagnose
    [[ $status == 1 && $output == *$'Diagnose Proxy problem (ignored)\n  ! Abnormal: Please disable HTTP proxy.\nNo problems but ignored ones (bits: 4096; told: 4096).' ]]
}

@test "nothing but the router is left" {
    ask diagnose --json
    finds 1 65536 1 '' "$good_1" '"issue": 1, "errorStatus": []' "$good_3" "$good_4"
    ask diagnose
    says 1 'Ethernet & Wi-Fi Connectivity
    Normal: Network card connected
Diagnose IP problem
  ! abnormal
Diagnose DNS problem
    Normal: The current DNS server parsed domains successfully.
Diagnose Proxy problem
    Normal: No proxy issues since no HTTP proxy used.
1 problem (bits: 65536; told: none).' 'Diagnosing the connection
The IP address of router is abnormal.
Please check the settings of your router or contact ISP.
Nobody can be asked; taken: OK'
}

@test "repair: nothing was found" {
    start_fake_daemon
    fake ping 'echo "time=1"'
    ask diagnose --repair
    [[ $status == 0 && $output == *$'\nNo problems.' && $errors == 'Diagnosing the connection' ]]
    expect_silence daemon 0.1
}

@test "repair: it is gone" {
    start_fake_daemon
    break_link
    answer_later
    ask diagnose --repair
    [[ $status == 0 && $output == 'Ethernet & Wi-Fi Connectivity
  ! Abnormal: '*'
1 problem (bits: 1; told: 1).

After the repair:
Ethernet & Wi-Fi Connectivity
    Normal: Network card connected
'*$'\nNo problems.' ]] || complain "$output"
    [[ $errors == $'Diagnosing the connection\nRepairing the connection' ]] || complain "$errors"
    expect_line daemon "^runShell /bin/sh \['-c', 'networksetup -setnetworkserviceenabled Ethernet on'\]$"
    expect_line daemon "^runShell /bin/sh \['-c', 'networksetup -setnetworkserviceenabled Wi-Fi on'\]$"
    expect_silence daemon 0.1
}

@test "repair: it is still there" {
    start_fake_daemon
    break_name_servers
    ask --json diagnose --repair
    finds 1 256 1 '256, 256' "$good_1" "$good_2" "$bad_3" "$unchecked"
    expect_line daemon "^runShell /bin/sh \['-c', 'networksetup -setdnsservers Wi-Fi 8\.8\.8\.8 8\.8\.4\.4 .* 66\.76\.175\.100'\]$"
    expect_silence daemon 0.1
}

@test "repair: with nobody to ask, the proxies are closed" {
    start_fake_daemon
    use_proxy
    answer_later
    ask diagnose --repair --json
    finds 0 0 0 4096 "$good_1" "$good_2" "$good_3" "$good_4" True
    expect_line daemon "^runShell /bin/sh \['-c', 'networksetup -setwebproxystate Wi-Fi off'\]$"
    expect_silence daemon 0.1
}

@test "ignore: the choice is turned round, where every host of the diagnosis sees it" {
    ask ignore NetworkKey4
    says 0 'NetworkKey4 (Diagnose Proxy problem) is ignored from now on.'
    python3 - "$here/home/Library/Preferences/com.zelmor.Velq.plist" <<'CHECK'
import plistlib, sys
assert plistlib.load(open(sys.argv[1], "rb")) == {"NetworkKey4": True}
CHECK
    ask ignore NetworkKey4
    says 0 'NetworkKey4 (Diagnose Proxy problem) is not ignored any more.'
    ask ignore --json NetworkKey4
    says_json 0 '{"ignoreKey": "NetworkKey4", "ignore": True}'
    [[ $(ls "$here/home/Library/Preferences") == com.zelmor.Velq.plist ]]
}

@test "ignore: what cannot be ignored is refused" {
    local usage='usage: velq ignore KEY [--json] [--help]'
    ask ignore NetworkKey1
    says 2 '' "velq: 'NetworkKey1' (Ethernet & Wi-Fi Connectivity) may not be ignored"$'\n'"$usage"
    ask ignore networkkey4 --json
    says 2 '' "velq: there is no issue 'networkkey4'; velq ignore --help names those that there are"$'\n'"$usage"
    [[ ! -e $here/home/Library ]]
}

@test "ignore: a choice that cannot be stored is a failure" {
    : >"$here/home/Library"
    ask ignore NetworkKey4
    says 1 '' 'velq: the choice cannot be stored'
}

@test "proxies: those in use" {
    ask proxies
    says 0 'No proxies are switched on.'
    fake_services socksfirewall
    ask proxies
    says 0 'PROXY  SERVER      PORT  ACCESS
Socks  proxy.test  3128  with a password'
    ask proxies --json
    says_json 0 '[{"proxyType": "Socks", "serverIP": "proxy.test", "port": "3128", "enabled": True, "authenticated": True}]'
}
