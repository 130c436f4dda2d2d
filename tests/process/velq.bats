#!/usr/bin/env bats
# The command for terminals and scripts: what it runs, what it says to people and to programs, and what it ends with.
# The tools and the root daemon are the test's own.

source "$BATS_TEST_DIRNAME/../support/velq.bash"

bats_require_minimum_version 1.5.0

usage=$'usage: velq COMMAND [ARGUMENTS] [--json]\n       velq [COMMAND] --help\n       velq --version'

all_commands=(status services devices repair restore diagnose ignore proxies optimize accelerate)

setup()
{
    make_velq
}

teardown()
{
    stop_everything
}

# The first off and without a link, the second on and carrying.
fake_inventory()
{
    fake_ports 'Ethernet|lan7|02:00:00:00:00:07|Disabled|inactive' 'Wi-Fi|lan0|02:00:00:00:00:08|Enabled|active' \
        'Loopback|lo|00:00:00:00:00:00|Enabled|inactive'
}

expect_inventory()
{
    expect_line tools '^networksetup -listallhardwareports$'
    expect_line tools '^networksetup -getnetworkserviceenabled Ethernet$'
    expect_line tools '^ifconfig lan7$'
    expect_line tools '^networksetup -getnetworkserviceenabled Wi-Fi$'
    expect_line tools '^ifconfig lan0$'
}

@test "status: no connection" {
    fake route 'exit 1'
    ask status
    says 1 'No network connection.'
    ask status --json
    says_json 1 '{"connected": False, "interface": None}'
    expect_no_tool
}

@test "status: a connection, and the interface that carries" {
    connect
    fake route 'printf "   route to: default\n  interface: lan0\n"'
    ask status
    says 0 'Connected to the network, by lan0.'
    expect_line tools '^route -n get default$'
    expect_no_tool
    ask --json status
    says_json 0 '{"connected": True, "interface": "lan0"}'
}

@test "status: a connection with nobody to tell the interface" {
    connect
    fake route 'exit 1'
    ask status
    says 0 'Connected to the network.'
    ask status --json
    says_json 0 '{"connected": True, "interface": None}'
}

@test "status: the bundle's own tools are found" {
    connect
    ask status
    says 0 'Connected to the network, by lan0.'
}

@test "services: the inventory" {
    fake_inventory
    ask services
    says 0 'SERVICE   INTERFACE  HARDWARE ADDRESS   IP ADDRESS   SWITCH    LINK
Ethernet  lan7       02:00:00:00:00:07  -            disabled  inactive
Wi-Fi     lan0       02:00:00:00:00:08  192.168.7.2  enabled   active'
    expect_inventory
    expect_no_tool
}

@test "services: the inventory for programs" {
    fake_inventory
    ask services --json
    says_json 0 '[
        {"netType": "Ethernet", "name": "Ethernet", "interface": "lan7", "macAdds": "02:00:00:00:00:07",
         "ipAdds": None, "enabled": False, "isActive": False},
        {"netType": "Wi-Fi", "name": "Wi-Fi", "interface": "lan0", "macAdds": "02:00:00:00:00:08",
         "ipAdds": "192.168.7.2", "enabled": True, "isActive": True}]'
    expect_inventory
    expect_no_tool
}

@test "services: a tool that fails lists none" {
    fake networksetup 'echo "Hardware Port"; exit 1'
    ask services --json
    says_json 0 '[]'
    ask services
    says 0 'No network services.'
}

@test "what the tools complain of is kept to themselves, unless it is asked for" {
    connect
    fake_inventory
    fake route 'echo "route: no such thing" >&2; echo "  interface: lan0"'
    ask status
    says 0 'Connected to the network, by lan0.'
    ask status --verbose
    says 0 'Connected to the network, by lan0.' 'route: no such thing'
    ask status --json
    says_json 0 '{"connected": True, "interface": "lan0"}'
    ask status --json --verbose
    [[ $status == 0 && $errors == 'route: no such thing' ]]
    status=0
    "${inside[@]}" "${surroundings[@]}" "$program" status >"$here/output" 2>&- || status=$?
    [[ $status == 0 && $(<"$here/output") == 'Connected to the network, by lan0.' ]]
}

@test "services: a name does nothing to the terminal" {
    fake_ports $'A\e[2JB|lan7|02:00:00:00:00:07|Disabled|inactive' 'Loopback|lo|00:00:00:00:00:00|Enabled|inactive'
    ask services
    [[ $status == 0 && $output == *$'\nA [2JB   lan7 '* ]]
    ask services --json
    says_json 0 '[{"netType": "A\033[2JB", "name": "A\033[2JB", "interface": "lan7", "macAdds": "02:00:00:00:00:07",
        "ipAdds": None, "enabled": False, "isActive": False}]'
}

@test "devices: those of the routing table" {
    fake netstat 'printf "192.168.7.9  a:b:c:d:e:f  UHLWI  lan0\n192.168.7.10  1:2:3:4:5:6  UHLWI  lan0\n"'
    ask devices
    says 0 'IP ADDRESS    HARDWARE ADDRESS
192.168.7.9   a:b:c:d:e:f
192.168.7.10  1:2:3:4:5:6'
    expect_line tools '^netstat -nr$'
    expect_no_tool
    ask devices --json
    says_json 0 '[{"ip": "192.168.7.9", "macAddress": "a:b:c:d:e:f"}, {"ip": "192.168.7.10", "macAddress": "1:2:3:4:5:6"}]'
}

@test "devices: a tool that fails lists none" {
    fake netstat 'exit 1'
    ask devices --json
    says_json 0 '[]'
    ask devices
    says 0 'No devices of the local network are known yet.'
}

@test "repair: nothing to do while the network is usable" {
    connect
    fake route 'echo "  interface: lan0"'
    fake networksetup
    fake ifconfig
    ask repair
    says 0 $'Nothing to repair: the computer is connected to the network, by lan0.\nIf pages do not load all the same, try velq diagnose.'
    expect_line tools '^route -n get default$'
    expect_no_tool
}

@test "repair: still no connection" {
    start_fake_daemon
    fake_inventory
    ask repair
    says 1 $'There still is no network connection.\nTo find out why, try velq diagnose.' \
        'Repairing the connection'
    expect_inventory
    expect_no_tool
    expect_line daemon "^runShell /bin/sh \['-c', 'ifconfig lan7 up'\]$"
    expect_line daemon "^runShell /bin/sh \['-c', 'networksetup -setnetworkserviceenabled Ethernet on'\]$"
    expect_line daemon "^runShell /bin/sh \['-c', 'networksetup -setdhcp Ethernet'\]$"
    expect_line daemon "^runShell /bin/sh \['-c', 'networksetup -setdhcp Wi-Fi'\]$"
    expect_silence daemon 0.1
    ask repair --json
    python3 -m json.tool <"$here/output" >/dev/null
    [[ $status == 1 && $output == *'"connected": false'* && $errors == 'Repairing the connection' ]]
}

@test "repair: the connection is back" {
    start_fake_daemon
    fake_inventory
    fake ifconfig 'ip route replace default via 192.168.7.1'
    fake route 'echo "  interface: lan0"'
    ask repair
    says 0 'The connection is back, by lan0.' 'Repairing the connection'
}

@test "an interruption ends it at once, as the signal would" {
    fake networksetup 'echo $$ >"'"$here"'/hanging"; exec sleep infinity'
    local signal
    for signal in INT TERM HUP; do
        start velq "${inside[@]}" "${tied[@]}" "${surroundings[@]}" "$program" services --json
        expect_line tools '^networksetup '
        kill "-$signal" "${pids[velq]}"
        wait_for velq
        [[ $status == $((128 + $(kill -l "$signal"))) ]] || complain "it ended with $status"
        [[ $(<"$here/velq.err") == 'velq: interrupted' ]]
        expect_silence velq 0.1
        await_hanging
        kill -KILL "$(<"$here/hanging")"
        rm "$here/velq.out" "$here/hanging"
    done
}

# The tool tells that it was called before it tells who it is.
await_hanging()
{
    local deadline=$((EPOCHSECONDS + patience))
    until [[ -s $here/hanging ]]; do
        ((EPOCHSECONDS < deadline)) || complain 'the tool never came to hang'
    done
}

@test "wrong use is refused with a sentence, and nothing is done" {
    fake networksetup
    ask
    says 2 '' "velq: which command? velq --help lists them"$'\n'"$usage"
    ask --json
    says 2 '' "velq: which command? velq --help lists them"$'\n'"$usage"
    ask mend
    says 2 '' "velq: unknown command 'mend'; velq --help lists those that there are"$'\n'"$usage"
    ask ''
    says 2 '' "velq: unknown command ''; velq --help lists those that there are"$'\n'"$usage"
    ask --yaml
    says 2 '' "velq: unknown option '--yaml'"$'\n'"$usage"
    ask --yaml services
    says 2 '' "velq: unknown option '--yaml'"$'\n''usage: velq services [--json] [--help]'
    ask services --yaml
    says 2 '' "velq: unknown option '--yaml'"$'\n''usage: velq services [--json] [--help]'
    ask services lan0 --help
    says 2 '' "velq: unexpected argument 'lan0'"$'\n''usage: velq services [--json] [--help]'
    ask ignore
    says 2 '' "velq: which KEY?"$'\n''usage: velq ignore KEY [--json] [--help]'
    ask ignore NetworkKey4 NetworkKey4
    says 2 '' "velq: unexpected argument 'NetworkKey4'"$'\n''usage: velq ignore KEY [--json] [--help]'
    ask services --repair
    says 2 '' "velq: unknown option '--repair'"$'\n''usage: velq services [--json] [--help]'
    ask --repair
    says 2 '' "velq: unknown option '--repair'"$'\n'"$usage"
    expect_no_tool
}

@test "help and version, of all and of each command" {
    ask --help
    [[ $status == 0 && $errors == '' && $output == "$usage"$'\n'* ]]
    local help=$output command
    [[ $help =~ $'\n  status '.*$'\n  diagnose '.*$'\n  repair '.*$'\n  restore '.*$'\n  services '.*$'\n  helper ' ]]
    ask -h
    says 0 "$help"
    for command in "${all_commands[@]}"; do
        [[ $help == *"  $command "* ]]
        ask "$command" --help
        [[ $status == 0 && $errors == '' && $output == "usage: velq $command "*"[--json] [--help]"$'\n'* ]]
        [[ $output == *$'\nExit status:\n'* ]]
    done
    ask diagnose -h
    [[ $output == 'usage: velq diagnose [--repair] [--json] [--help]'*$'\n  --repair    repair what is found\n'* ]]
    ask ignore --help
    [[ $output == 'usage: velq ignore KEY [--json] [--help]'*$'\n  KEY         the ignoreKey of the issue\n'* ]]
    ask --version
    [[ $status == 0 && $errors == '' && $output =~ ^velq\ [0-9]+\.[0-9]+\.[0-9]+$ ]]
}

@test "an answer that cannot be written is a failure" {
    connect
    status=0
    "${inside[@]}" "${surroundings[@]}" "$program" status >/dev/full 2>"$here/errors" || status=$?
    [[ $status == 1 ]]
    [[ $(<"$here/errors") == 'velq: standard output: No space left on device' ]]
    status=0
    "${inside[@]}" "${surroundings[@]}" "$program" status >&- 2>"$here/errors" || status=$?
    [[ $status == 1 && $(<"$here/errors") == 'velq: standard output: '* ]]
}

# shellcheck disable=SC2016 # the other shell's own
printing='velq() { printf "<%s>" "$@"; echo; }'

# type_to_bash LINE [ECHO [PROGRAM]]: into a terminal where a bash can complete, and a function stands in for the program,
# which prints its words in angle brackets unless told otherwise; what the terminal shows.
type_to_bash()
{
    printf '%s\n' "source '$VELQ_BUILD/src/cli/velq.bash'" "${3:-$printing}" "$1" exit \
        | timeout --signal=KILL "$patience" env TERM=dumb INPUTRC=/dev/null \
            script --quiet --return --echo "${2:-never}" --command 'bash --norc --noprofile -i' /dev/null | tr -d '\r'
}

# typed LINE [PROGRAM]: the words that the program gets of it.
typed()
{
    type_to_bash "$1" never "${2:-}" | grep -o '<.*'
}

@test "bash completes commands and options" {
    need script bash
    [[ $(typed $'velq repa\t--j\t') == '<repair><--json>' ]]
    [[ $(typed $'velq sta\t--h\t') == '<status><--help>' ]]
    [[ $(typed $'velq --v\t') == '<--version>' ]]
    [[ $(typed $'velq diag\t--r\t') == '<diagnose><--repair>' ]]
    [[ $(typed $'velq ignore N\t') == '<ignore><NetworkKey4>' ]]
    [[ $(typed $'velq repair --r\t') == '<repair><--r>' ]]
    # A second operand there is none, and an option is given once.
    [[ $(typed $'velq ignore NetworkKey4 O\t') == '<ignore><NetworkKey4><O>' ]]
    [[ $(typed $'velq ignore --json Net\t') == '<ignore><--json><NetworkKey4>' ]]
    [[ $(typed $'velq helper status --j\t') == '<helper><status><--json>' ]]
    [[ $(typed $'velq helper --json status re\t') == '<helper><--json><status><re>' ]]
    [[ $(typed $'velq diagnose --repair --r\t') == '<diagnose><--repair><--r>' ]]
    [[ $(typed $'velq --json diag\t--r\t') == '<--json><diagnose><--repair>' ]]
    # More than one begins like that, none does, and after a command there is no other.
    [[ $(typed $'velq s\t') == '<s>' ]]
    [[ $(typed $'velq x\t') == '<x>' ]]
    [[ $(typed $'velq status rep\t') == '<status><rep>' ]]
    [[ $(typed $'velq status --v\t') == '<status><--verbose>' ]]
    [[ $(typed $'velq status --vers\t') == '<status><--vers>' ]]
}

@test "bash completes the services that there are" {
    need script bash
    # shellcheck disable=SC2016 # the other shell's own
    local listing='velq() { if [[ $1 == services ]]; then
        printf "SERVICE INTERFACE\nEthernet lan0\n\$(touch\${IFS}\$canary) lan1\nWi-Fi -\n"; else printf "<%s>" "$@"; echo; fi; }'
    canary=$here/canary
    export canary
    [[ $(typed $'velq restore E\t' "$listing") == '<restore><Ethernet>' ]]
    [[ $(typed $'velq restore W\t--j\t' "$listing") == '<restore><Wi-Fi><--json>' ]]
    [[ $(typed $'velq restore Wi-Fi E\t' "$listing") == '<restore><Wi-Fi><E>' ]]
    [[ $(typed $'velq restore $\t' "$listing") == *'<restore>'* && ! -e $canary ]]
}

@test "bash shows what there is" {
    need script bash
    local shown command
    shown=$(type_to_bash $'velq \t\t' always)
    for command in "${all_commands[@]}"; do
        [[ $shown =~ [[:space:]]${command}[[:space:]] ]]
    done
    [[ $(type_to_bash $'velq s\t\t' always) =~ services[[:space:]]+status ]]
}

@test "the documents that cannot be written are a failure" {
    local documents=$VELQ_BUILD/src/cli/velq_documents
    local pages=("$VELQ_BUILD"/src/nettools/velq-*.1) page
    local tools=()
    for page in "${pages[@]}"; do
        page=${page##*/velq-}
        tools+=("${page%.1}")
    done
    "$documents" "$here/page" "$here/completion" "${tools[@]}"
    cmp "$here/page" "$VELQ_BUILD/src/cli/velq.1"
    cmp "$here/completion" "$VELQ_BUILD/src/cli/velq.bash"
    run -1 "$documents" /dev/full "$here/completion"
    run -1 "$documents" "$here/page" "$here/none/completion"
    run -1 "$documents" "$here/page"
    run -1 "$documents"
}

@test "the manual page tells of every command, and man has nothing to complain about" {
    need man
    local page command
    page=$(MANWIDTH=80 LC_ALL=C.UTF-8 man --warnings -l "$VELQ_BUILD/src/cli/velq.1" 2>"$here/errors" | col -bx)
    [[ ! -s $here/errors ]] || complain "$(<"$here/errors")"
    for command in "${all_commands[@]}"; do
        [[ $page == *"velq $command"* ]]
    done
    page=$(tr -s ' \n' ' ' <<<"$page")
    [[ $page == *'velq diagnose [--repair] '*'velq ignore KEY '*'issue: NetworkKey4, OptimizeKey1, '*', AppOptimize4.'* ]]
    [[ $page == *'EXIT STATUS'*'0'*'1'*'2'* ]]
    local see=${page##*SEE ALSO} other
    for other in "$VELQ_BUILD"/src/nettools/velq-*.1; do
        other=${other##*/}
        [[ $see == *" ${other%.1}(1)"* ]] || complain "$other is not among $see"
        [[ $(MANWIDTH=80 LC_ALL=C.UTF-8 man -l "$VELQ_BUILD/src/nettools/$other" | col -bx) == *'SEE ALSO'*' velq(1)'* ]]
    done
}
