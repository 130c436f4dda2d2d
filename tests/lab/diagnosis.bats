#!/usr/bin/env bats
# The links of the chain to the internet, each broken for real under a real NetworkManager: found by a person at the
# screen, repaired by the real root daemon, and found gone.

source "$BATS_TEST_DIRNAME/../support/homenetwork.bash"

setup()
{
    need_home_network
    make_home_network
    make_internet
}

teardown()
{
    stop_machine
    stop_everything
}

# Behind the router's wire there is the probes' host and one of the public name servers.
make_internet()
{
    "${machine[@]}" ip -n router addr add 192.0.2.80/32 dev lo
    "${machine[@]}" ip -n router addr add 8.8.8.8/32 dev far0
    "${machine[@]}" systemctl stop router
    router_options=(--address=/debian.org/192.0.2.80 --address=/iana.org/192.0.2.80)
    start_home_router
    velq status --json >/dev/null || complain 'no connection to begin with'
}

# The person's desktop: env's words.
desktop=(XDG_CURRENT_DESKTOP=GNOME)

velq()
{
    at_seat person env "${desktop[@]}" "$app/Contents/MacOS/velq" "$@"
}

# diagnose STATUS BITS TOLD [OPTIONS...]: what the scanner's bits and the delegate's must be.
diagnose()
{
    local status=0
    velq diagnose --json "${@:4}" >"$here/object" 2>"$here/errors" || status=$?
    [[ $status == "$1" ]] || complain "it ended with $status: $(cat "$here/object" "$here/errors")"
    python3 -c 'import json, sys
found = json.load(open(sys.argv[1]))
bits = (found["errorStatus"], found["delegate"])
sys.exit(bits != (int(sys.argv[2]), json.loads(sys.argv[3])) and f"found {found}")' "$here/object" "$2" "$3"
}

# The host that the probes ask does not answer them; all else works.
silence_internet()
{
    "${machine[@]}" ip netns exec router sysctl --quiet --write net.ipv4.icmp_echo_ignore_all=1
}

@test "everything is fine" {
    diagnose 0 0 '[]'
    velq diagnose >"$here/text"
    [[ $(tail -n 1 "$here/text") == 'No problems.' ]]
}

@test "no link: a cable that is out, which no repair puts back" {
    pull_home_cable
    diagnose 1 1 '[1]'
    diagnose 1 1 '[1, 1]' --repair
    put_home_cable_back
    "${machine[@]}" timeout "$patience" nm-online --quiet --timeout="$patience"
    diagnose 0 0 '[]'
}

@test "no link: a service that was switched off" {
    tool networksetup -setnetworkserviceenabled Ethernet off
    diagnose 1 1 '[1]'
    diagnose 0 0 '[1]' --repair
    [[ $(tool networksetup -getnetworkserviceenabled Ethernet) == Enabled ]]
    diagnose 0 0 '[]'
}

@test "a self-assigned address" {
    set_up_profile ipv4.method manual ipv4.addresses 169.254.7.9/16 ipv4.gateway 192.168.77.1 ipv4.dns 192.168.77.1
    diagnose 1 16 '[16]'
    grep -qF 'The devices below failed to obtain IP Ethernet: 169.254.7.9' "$here/object"
    diagnose 0 0 '[16]' --repair
    profile_asks_for_address
    diagnose 0 0 '[]'
}

@test "a dead name server" {
    set_up_profile ipv4.dns 192.168.77.9 ipv4.ignore-auto-dns yes
    diagnose 1 256 '[256]'
    diagnose 0 0 '[256]' --repair
    local servers
    mapfile -t servers < <(tool networksetup -getdnsservers Ethernet)
    [[ ${#servers[@]} == 16 && ${servers[0]} == 8.8.8.8 && ${servers[15]} == 66.76.175.100 ]]
    diagnose 0 0 '[]'
    # What was there before is kept, and comes back.
    tool networksetup -restore Ethernet
    [[ $(tool networksetup -getdnsservers Ethernet) == 192.168.77.9 ]]
}

@test "name servers that do not help either, and the way back that is told" {
    set_up_profile ipv4.dns 192.168.77.9 ipv4.ignore-auto-dns yes
    "${machine[@]}" ip -n router addr del 8.8.8.8/32 dev far0
    silence_internet
    local status=0
    velq diagnose --repair >"$here/text" 2>"$here/errors" || status=$?
    [[ $status == 1 && $(<"$here/errors") == $'Diagnosing the connection\nRepairing the connection' ]] \
        || complain "$status: $(<"$here/errors")"
    [[ $(tail -n 1 "$here/text") == 'To put back the settings that were changed: velq restore Ethernet' ]] \
        || complain "$(<"$here/text")"
    [[ $(tool networksetup -getdnsservers Ethernet | wc -l) == 16 ]]
    [[ $(velq restore Ethernet 2>&1) == 'Putting the settings of Ethernet back
The settings of Ethernet are as they were before Velq changed them.' ]]
    [[ $(tool networksetup -getdnsservers Ethernet) == 192.168.77.9 ]]
    [[ $(velq restore lan0 2>/dev/null) == 'Nothing to put back: Velq has changed none of the settings of Ethernet.' ]]
}

@test "everything is fine, but nobody answers" {
    silence_internet
    diagnose 1 65536 '[]'
    diagnose 1 0 '[]' --repair
    "${machine[@]}" ip netns exec router sysctl --quiet --write net.ipv4.icmp_echo_ignore_all=0
    diagnose 0 0 '[]'
}

# for_person FORM WORDS...: as root on the person's behalf.
for_person()
{
    "${machine[@]}" env VELQ_UID=4001 /usr/libexec/velq/nettools/networksetup "$1" Ethernet "${@:2}"
}

person_is_here()
{
    "${machine[@]}" loginctl enable-linger person
    "${machine[@]}" systemctl start user@4001
}

# expect_proxy_closed: found as what the person ignores, closed where nobody can be asked, and found gone.
expect_proxy_closed()
{
    silence_internet
    diagnose 1 65536 '[]'
    velq ignore NetworkKey4
    diagnose 1 4096 '[4096]'
    [[ $(velq proxies) == *$'\nHTTP   proxy.test  3128  open' ]] || complain "$(velq proxies)"
    diagnose 1 65536 '[4096]' --repair
    [[ $(velq proxies --json) == $'[\n]' ]] || complain "$(velq proxies --json)"
    diagnose 1 65536 '[]'
}

@test "a proxy in GNOME's settings, and back" {
    need gsettings
    gsettings get org.gnome.system.proxy mode >/dev/null 2>&1 || skip 'needs gsettings-desktop-schemas'
    [[ -x /usr/libexec/dconf-service ]] || skip 'needs dconf-service'
    person_is_here
    at_seat person gsettings set org.gnome.system.proxy.http host proxy.test
    at_seat person gsettings set org.gnome.system.proxy.http port 3128
    at_seat person gsettings set org.gnome.system.proxy mode manual
    expect_proxy_closed
    [[ $(at_seat person gsettings get org.gnome.system.proxy mode) == "'none'" ]]
    for_person -setwebproxystate on
    [[ $(at_seat person gsettings get org.gnome.system.proxy mode) == "'manual'" ]]
    [[ $(at_seat person gsettings get org.gnome.system.proxy.http host) == "'proxy.test'" ]]
    diagnose 1 4096 '[4096]'
}

@test "a proxy in KDE's settings, and back" {
    person_is_here
    desktop=(XDG_CURRENT_DESKTOP=KDE)
    from_afar person systemctl --user set-environment "${desktop[@]}"
    at_seat person sh -c 'mkdir -p ~/.config; printf "[Proxy Settings]\nProxyType=1\nhttpProxy=http://proxy.test 3128\n" >~/.config/kioslaverc'
    expect_proxy_closed
    grep -q '^ProxyType=0' "$machine_root/home/person/.config/kioslaverc"
    for_person -setwebproxystate on
    grep -qF 'httpProxy=http://proxy.test 3128' "$machine_root/home/person/.config/kioslaverc"
    grep -q '^ProxyType=1' "$machine_root/home/person/.config/kioslaverc"
    diagnose 1 4096 '[4096]'
}
