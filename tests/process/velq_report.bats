#!/usr/bin/env bats
# velq report: what it tells somebody who is to help, and that it tells nothing else.

source "$BATS_TEST_DIRNAME/../support/velq.bash"

setup()
{
    make_velq
    with "XDG_STATE_HOME=$here/state" XDG_CURRENT_DESKTOP=Test
    fake_computer
}

teardown()
{
    stop_everything
}

# A port whose device is called by its hardware address, and a network and a proxy with names of their own.
fake_computer()
{
    fake networksetup "case \$1 in
-listallhardwareports) printf '\nHardware Port: Wi-Fi\nDevice: wlx020000000008\nEthernet Address: 02:00:00:00:00:08\n'
    printf '\nHardware Port: Loopback\nDevice: lo\nEthernet Address: 00:00:00:00:00:00\n' ;;
-getnetworkserviceenabled) echo Enabled ;;
-getwebproxy) printf 'Enabled: Yes\nServer: cachebox\nPort: 3128\nAuthenticated Proxy Enabled: 0\n' ;;
esac"
    fake ifconfig "printf 'x: flags\n\tstatus: active\n'"
    fake route "printf 'interface: wlx020000000008\n'"
    fake nmcli 'echo Zuhause; echo Wi-Fi'
    fake airport 'echo "          SSID: Nachbar 5G"'
}

# keep COMMAND <RESULT: as the command does.
keep()
{
    mkdir -p "$here/state/velq/results"
    cat >"$here/state/velq/results/$1.json"
}

secrets=(192.168.7.17 02:00:00:00:00:08 020000000008 cachebox Zuhause 'Nachbar 5G' fe80::17 intern.example
    "$(hostname)")

@test "nothing private is in it" {
    keep diagnose <<RESULT
{"when": "2026-11-21T14:40:12", "result": {"errorStatus": 16, "items": [{"title": "IP address", "issue": 1, "errorStatus":
[{"error": true, "name": "IP", "des": "192.168.7.17 and fe80::17 in zuhause, by cachebox, intern.example, for $(hostname) in $here/home"}]}]}}
RESULT
    ask report
    [[ $status == 0 && $errors == '' ]] || complain "it ended with $status: $errors"
    for secret in "${secrets[@]}" "$here/home"; do
        ! grep -qiF -e "$secret" "$here/output" || complain "'$secret' is in it: $output"
    done
    grep -qE '^Velq 1\.0\.0$' "$here/output"
    grep -qE '^  desktop +Test$' "$here/output"
    grep -qE '^  networksetup +-$' "$here/output"
    grep -qE '^  SERVICE +INTERFACE +HARDWARE ADDRESS +IP ADDRESS +SWITCH +LINK$' "$here/output"
    grep -qE '^  Wi-Fi +wlx\[hardware address 1\] +\[hardware address 2\] +- +enabled +active$' "$here/output"
    grep -qE '^  HTTP +\[server 1\] +3128 +open$' "$here/output"
    grep -qE '^  there for you +no$' "$here/output"
    grep -qF 'Last diagnose, 2026-11-21T14:40:12, status 16:' "$here/output"
    grep -qF '! IP: [IPv4 address 1] and [IPv6 address 1] in [network 1], by [server 1]' "$here/output"
    ask report --json
    [[ $status == 0 ]]
    for secret in "${secrets[@]}" "$here/home"; do
        ! grep -qiF -e "$secret" "$here/output" || complain "'$secret' is in it: $output"
    done
}

@test "it tells whether there is a connection" {
    ask report
    [[ $output == *$'\n\nConnection:\n  connected       no\n  interface       -\n  NetworkManager  absent\n\n'* ]] || complain "$output"
    connect
    ask report
    grep -qE '^  connected +yes$' "$here/output"
    grep -qE '^  interface +wlx\[hardware address 1\]$' "$here/output"
    ask report --json --private
    python3 -c 'import json, sys
wanted = {"connected": True, "interface": "wlx020000000008", "NetworkManager": "absent"}
sys.exit(json.load(open(sys.argv[1]))["connection"] != wanted)' "$here/output"
}

@test "without services and proxies there are sentences" {
    fake networksetup
    ask report
    grep -qxF '  No network services.' "$here/output"
    grep -qxF '  No proxies are switched on.' "$here/output"
}

@test "it changes nothing in the home" {
    find "$here/home" | sort >"$here/before"
    ask report
    find "$here/home" | sort | diff "$here/before" -
    # The one folder there, the other not.
    mkdir -p "$here/home/Library/LaunchAgents"
    echo '<plist version="1.0"><dict/></plist>' >"$here/home/Library/LaunchAgents/com.zelmor.Monitor.plist"
    find "$here/home" | sort >"$here/before"
    ask report --json
    find "$here/home" | sort | diff "$here/before" -
    grep -qF '"installed": false' "$here/output"
}

@test "everything is in it when that is asked for" {
    ask report --private
    for word in 02:00:00:00:00:08 wlx020000000008 cachebox; do
        grep -qF "$word" "$here/output" || complain "'$word' is not in it: $output"
    done
    ask report --private --json
    python3 - "$here/output" <<'PYTHON'
import json, sys
facts = json.load(open(sys.argv[1]))
assert sorted(facts) == ["connection", "helper", "monitor", "proxies", "results", "services", "system", "tools", "velq"], facts
assert facts["services"][0]["macAdds"] == "02:00:00:00:00:08", facts
assert facts["results"] == {} and facts["monitor"]["installed"] is False, facts
PYTHON
}

@test "a scan keeps its result, and the next one replaces it" {
    fake ping 'exit 1'
    ask diagnose --json
    cp "$here/output" "$here/first"
    kept=$here/state/velq/results/diagnose.json
    [[ $(stat -c %a "$kept") == 600 ]]
    python3 -c 'import json, sys
kept, told = (json.load(open(name)) for name in sys.argv[1:])
sys.exit(kept["result"] != told)' "$kept" "$here/first"
    inode=$(stat -c %i "$kept")
    ask diagnose
    [[ $(stat -c %i "$kept") != "$inode" ]]
    [[ $(ls "${kept%/*}") == diagnose.json ]]
}

@test "a result that cannot be kept fails nothing" {
    touch "$here/state"
    ask diagnose --json
    python3 -m json.tool <"$here/output" >/dev/null
    [[ $errors != *state* ]]
    rm "$here/state"
    echo '{ broken' | keep optimize
    ask report --json
    [[ $status == 0 && $errors == '' ]]
}
