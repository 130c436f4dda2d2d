#!/usr/bin/env bats
# The command in a terminal of a person's, in a home network with a real NetworkManager and the real root daemon: what it
# finds is what the system's own commands find, and what it repairs is repaired.

source "$BATS_TEST_DIRNAME/../support/velqathome.bash"

setup()
{
    need_home_network
    need python3
    make_home_network
}

teardown()
{
    stop_machine
    stop_everything
}

# says STATUS OUTPUT [ERRORS]: that is what came of the last one.
says()
{
    [[ $status == "$1" ]] || complain "it ended with $status: $output $errors"
    [[ $output == "$2" ]] || complain "it said: $output"
    [[ $errors == "${3:-}" ]] || complain "it complained: $errors"
}

# of_json EXPRESSION: Python's, of the value that the last one printed; a text without quotes.
of_json()
{
    python3 -c 'import json, sys
value = json.load(open(sys.argv[1]))
print(eval(sys.argv[2]))' "$here/output" "$1"
}

address_of_lan0()
{
    "${machine[@]}" ip -4 -json address show dev lan0 | python3 -c 'import json, sys
print(*(address["local"] for link in json.load(sys.stdin) for address in link["addr_info"]))'
}

# by_nmcli FIELD: of the device.
by_nmcli()
{
    "${machine[@]}" nmcli --escape no --get-values "$1" device show lan0
}

# NetworkManager tells it after the kernel, whose routes are there first.
is_connected()
{
    [[ $(by_nmcli GENERAL.STATE) == '100 (connected)' ]]
}

no_default_route()
{
    [[ -z $("${machine[@]}" ip route show default) ]]
}

# The two ways in which a repair that helped ends: in words after a fault, and as JSON after the same once more.
expect_repair()
{
    "$@"
    velq status
    says 1 'No network connection.'
    velq repair
    says 0 'The connection is back, by lan0.' 'Repairing the connection'
    "$@"
    velq repair --json
    [[ $status == 0 && $errors == 'Repairing the connection' ]] || complain "$status: $errors"
    [[ $(of_json value) == "{'connected': True, 'interface': 'lan0'}" ]]
    [[ $("${machine[@]}" ip route show default) == 'default via 192.168.77.1 dev lan0 '* ]]
    until_true is_connected
}

@test "status, as nmcli and ip tell it" {
    velq status
    says 0 'Connected to the network, by lan0.'
    [[ $(by_nmcli GENERAL.STATE) == '100 (connected)' ]]
    velq status --json
    [[ $(of_json 'value["interface"]') == "$("${machine[@]}" ip route show default | awk '{ print $5 }')" ]]
    velq report
    [[ $output == *$'\nConnection:\n  connected       yes\n  interface       lan0\n  NetworkManager  running\n'* ]] || complain "$output"
    "${machine[@]}" nmcli networking off
    until_true no_default_route
    velq status
    says 1 'No network connection.'
    velq status --json
    [[ $status == 1 && $(of_json value) == "{'connected': False, 'interface': None}" ]]
}

@test "services, as nmcli and ip tell them" {
    velq services --json
    [[ $status == 0 && $errors == '' ]] || complain "$status: $errors"
    [[ $(of_json '[one["name"] for one in value]') == "['Ethernet']" ]]
    [[ $(of_json 'value[0]["interface"]') == "$(by_nmcli GENERAL.DEVICE)" ]]
    [[ $(of_json 'value[0]["macAdds"].upper()') == "$(by_nmcli GENERAL.HWADDR)" ]]
    [[ $(of_json 'value[0]["ipAdds"]') == "$(address_of_lan0)" ]]
    [[ $(of_json 'value[0]["enabled"], value[0]["isActive"]') == '(True, True)' ]]
    velq services
    [[ $status == 0 && $output == *$'\nEthernet  lan0 '*" $(address_of_lan0)  enabled  active" ]] || complain "$output"
    pull_home_cable
    velq services --json
    [[ $(of_json 'value[0]["isActive"]') == False && $(by_nmcli WIRED-PROPERTIES.CARRIER) == off ]]
    put_home_cable_back
    switch_service_off
    velq services --json
    [[ $(of_json 'value[0]["enabled"], value[0]["ipAdds"]') == '(False, None)' ]]
    [[ $(by_nmcli GENERAL.STATE) == '30 (disconnected)' && $(address_of_lan0) == '' ]]
}

@test "devices, as ip tells them" {
    "${machine[@]}" ping -q -c 1 -W 10 192.168.77.1
    velq devices --json
    [[ $status == 0 && $errors == '' ]] || complain "$status: $errors"
    local listed neighbours
    # Each byte without a leading zero in one of them.
    listed=$(of_json '"\n".join(sorted(one["ip"] + " " + ":".join(f"{int(byte, 16):02x}"
        for byte in one["macAddress"].split(":")) for one in value))')
    neighbours=$("${machine[@]}" ip -4 neighbour show dev lan0 | awk '/ lladdr / { print $1, $3 }' | sort)
    [[ $neighbours == '192.168.77.1 '* ]]
    [[ $listed == "$neighbours" ]] || complain "$listed is not $neighbours"
    velq devices
    [[ $status == 0 && $output == *$'\n192.168.77.1 '* ]]
}

@test "nothing to repair" {
    local before
    before=$(journal_of_daemon)
    velq repair
    says 0 $'Nothing to repair: the computer is connected to the network, by lan0.\nIf pages do not load all the same, try velq diagnose.'
    [[ $(journal_of_daemon) == "$before" ]]
}

@test "an interface that was switched off" {
    expect_repair take_interface_down
}

@test "a service that was switched off" {
    expect_repair switch_service_off
    service_is Enabled
}

@test "an address that leads nowhere, kept in the profile" {
    expect_repair set_wrong_address
    profile_asks_for_address
}

@test "a cable that is out: it ends, and tells" {
    pull_home_cable
    velq repair
    says 1 $'There still is no network connection.\nTo find out why, try velq diagnose.' 'Repairing the connection'
    velq repair --json
    [[ $status == 1 && $errors == 'Repairing the connection' ]] || complain "$status: $errors"
    [[ $(of_json value) == "{'connected': False, 'interface': None}" ]]
    put_home_cable_back
    "${machine[@]}" timeout "$patience" nm-online --quiet --timeout="$patience"
    velq status
    says 0 'Connected to the network, by lan0.'
}

@test "where NetworkManager is stopped, that is said with what to do; where it is shut out, nothing is" {
    local stopped='velq: NetworkManager is installed but does not run; to start it: sudo systemctl start NetworkManager'
    local command
    "${machine[@]}" systemctl stop NetworkManager
    for command in status services diagnose; do
        velq "$command"
        [[ ${errors%%$'\n'*} == "$stopped" ]] || complain "$command: $errors"
        velq "$command" --json
        [[ $errors == '' ]] || complain "$command: $errors"
    done
    velq devices
    [[ $errors == '' ]] || complain "$errors"
    velq report
    [[ $errors == '' && $output == *$'\n  NetworkManager  stopped\n'* ]] || complain "$output$errors"
    "${machine[@]}" systemctl --quiet mask --runtime NetworkManager
    velq status
    [[ $errors == '' ]] || complain "$errors"
    "${machine[@]}" systemctl --quiet unmask --runtime NetworkManager
    "${machine[@]}" systemctl start NetworkManager
    velq status
    [[ $errors == '' ]] || complain "$errors"
}

@test "what a repair has changed for nothing, and the way back that is told" {
    set_wrong_address
    switch_service_off
    pull_home_cable
    velq repair
    says 1 $'There still is no network connection.\nTo find out why, try velq diagnose.\nTo put back the settings that were changed: velq restore Ethernet' \
        'Repairing the connection'
    profile_asks_for_address
    velq restore Ethernet
    says 0 'The settings of Ethernet are as they were before Velq changed them.' 'Putting the settings of Ethernet back'
    [[ $("${machine[@]}" nmcli --get-values ipv4.addresses connection show "$profile") == 10.9.9.9/24 ]]
    velq restore Ethernet --json
    [[ $status == 0 && $errors == '' && $(of_json value) == "{'message': None, 'restored': False, 'service': 'Ethernet'}" ]]
}
