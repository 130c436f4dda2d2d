#!/usr/bin/env bats
# What slows a connection down, and the applications, each made for real under a real root daemon: found by a person at
# the screen, sped up, and found gone.

source "$BATS_TEST_DIRNAME/../support/velqathome.bash"

setup()
{
    need_home_network
    need python3 gdbus
}

teardown()
{
    stop_machine
    stop_everything
}

# finds STATUS VALUES...: what the last JSON holds as its errorStatus, issueCount, delegate, and the items' issues.
finds()
{
    [[ $status == "$1" && $errors == '' ]] || complain "it ended with $status: $errors"
    python3 -c 'import json, sys
value = json.load(open(sys.argv[1]))
found = [value["errorStatus"], value["issueCount"], value["delegate"], [item["issue"] for item in value["items"]]]
sys.exit(str(found) != sys.argv[2] and f"found {value}")' "$here/output" "$2"
}

# says STATUS LINES...: what the last one printed has the lines.
says()
{
    [[ $status == "$1" ]] || complain "it ended with $status: $output $errors"
    local each
    for each in "${@:2}"; do
        [[ $'\n'$output$'\n' == *$'\n'"$each"$'\n'* ]] || complain "no line '$each': $output"
    done
}

# make_internet DNSMASQ-OPTIONS...: the hosts behind the router's wire are one that answers, in the router itself, and a
# public name server, which knows of no other. The options tell the router's own name server more.
make_internet()
{
    router_options=(--except-interface=lo --address=/#/192.0.2.80 "$@")
    make_home_network
    "${machine[@]}" ip -n router addr add 192.0.2.80/32 dev lo
    "${machine[@]}" ip -n router addr add 8.8.8.8/32 dev lo
    # It goes into the background once it listens.
    "${machine[@]}" systemd-run --quiet --property=Type=forking ip netns exec router dnsmasq --conf-file=/dev/null \
        --no-resolv --no-hosts --listen-address=8.8.8.8 --bind-interfaces --pid-file= --address=/#/192.0.2.80
}

# in_profile FIELD
in_profile()
{
    "${machine[@]}" nmcli --get-values "$1" connection show "$(profile_of_lan)"
}

mtu_of_lan()
{
    "${machine[@]}" cat /sys/class/net/lan0/mtu
}

priority_is_fine=$'Optimize Network Card Priority\n    Good: Your network runs at its top performance'
mtu_is_fine=$'Optimize\u00a0MTU Detection\n    Good: The MTU is set reasonably.'
names_are_fine=$'Optimize & Protect\u00a0DNS\n    Connectivity: Good: All is good. Please enjoy smooth surfing.'

# What nothing of ours repairs is all that is left.
finds_only_full_cache()
{
    velq optimize --json
    finds 1 '[256, 1, [256], [0, 0, 1, 0]]'
}

@test "packets that are too small, and a name server that leads to a host which loses replies" {
    make_internet --address=/kernel.org/192.0.2.81
    start lossy "${machine[@]}" ip netns exec router "$BATS_TEST_DIRNAME/lossy-host" 192.0.2.81
    expect_line lossy '^ready$'
    set_up_profile 802-3-ethernet.mtu 1400
    [[ $(mtu_of_lan) == 1400 ]]
    local replies
    replies=$(tool ping -c2 www.kernel.org)
    [[ $replies == *'Request timeout for icmp_seq 0'*' bytes from 192.0.2.81: icmp_seq=1 '*' 50.0% packet loss'* ]] \
        || complain "$replies"
    velq optimize --speedup
    says 1 "$priority_is_fine" $'Optimize\u00a0MTU Detection
  ! Not Good: The MTU is set\u00a0unreasonably\u00a0which may slow down your network speed.' \
        $'Optimize & Protect\u00a0DNS\n  ! Connectivity: Bad: Please switch to a faster DNS server.' \
        '3 problems (bits: 16, 256, 4096; told: 16, 256, 4096).' 'After the repair:' "$mtu_is_fine" \
        "$names_are_fine" '1 problem (bits: 256; told: 16, 256, 4096, 256).'
    [[ $(mtu_of_lan) == 1500 && $(in_profile 802-3-ethernet.mtu) == 1500 ]]
    [[ $(in_profile ipv4.dns) == 8.8.8.8 && $(in_profile ipv4.ignore-auto-dns) == yes ]]
    "${machine[@]}" grep -qx 'nameserver 8.8.8.8' /etc/resolv.conf
    finds_only_full_cache
}

# Two wired ports and a wireless one, each with a router's address of its own; the traffic goes by the last.
make_wireless_home()
{
    router_options=(--except-interface=lo --address=/#/192.0.2.80)
    make_home
    "${machine[@]}" ip -batch - <<'LINES'
link add lan1 type veth peer name far1 netns router
link add wlan0 type veth peer name far2 netns router
link set lan0 up
link set lan1 up
link set wlan0 up
addr add 192.168.77.2/24 dev lan0
addr add 192.168.78.2/24 dev lan1
addr add 192.168.79.2/24 dev wlan0
LINES
    "${machine[@]}" ip -n router -batch - <<'LINES'
link set far1 up
link set far2 up
addr add 192.168.78.1/24 dev far1
addr add 192.168.79.1/24 dev far2
addr add 192.0.2.80/32 dev lo
LINES
    "${machine[@]}" sh -c 'rm -f /etc/resolv.conf; echo "nameserver 192.168.77.1" >/etc/resolv.conf'
    "${machine[@]}" systemd-run --quiet /usr/bin/python3 -m dbusmock --system --template networkmanager
    "${machine[@]}" gdbus wait --system --timeout "$patience" org.freedesktop.NetworkManager
    "${machine[@]}" /usr/bin/python3 "$BATS_TEST_DIRNAME/wireless_computer.py" unix:path=/run/dbus/system_bus_socket \
        lan0=192.168.77.1 lan1=192.168.78.1 wlan0=192.168.79.1
    install_daemon
}

# routes_are LINES: the ports in the order in which the kernel takes them, each with its metric.
routes_are()
{
    local found
    found=$("${machine[@]}" ip route show default | awk '{ print $5, $7 }' | sort --key=2 --numeric-sort)
    [[ $found == "$1" ]] || complain "the routes are $found"
}

@test "Wi-Fi that is preferred to a cable" {
    /usr/bin/python3 -c 'import dbusmock' 2>/dev/null || skip 'needs python3-dbusmock'
    make_wireless_home
    routes_are $'wlan0 170\nlan1 180\nlan0 190'
    velq optimize --speedup
    says 1 $'Optimize Network Card Priority
  ! Not Good: The speed of Network card 1 is faster than Network card 2. Please switch to Network card 1.' \
        "$mtu_is_fine" "$names_are_fine" '2 problems (bits: 1, 256; told: 1, 256).' \
        'After the repair:' "$priority_is_fine" '1 problem (bits: 256; told: 1, 256, 256).'
    routes_are $'lan0 50\nwlan0 60\nlan1 70'
    [[ $(tool networksetup -listnetworkserviceorder) == *'(1) Ethernet'*'(2) Wi-Fi'*'(3) LAN-lan1'* ]]
    finds_only_full_cache
}

# all_of_them LINE: the four items, with it below each.
all_of_them()
{
    printf '%s\n' Safari "$1" iCloud "$1" iTunes "$1" AppStore "$1"
}

hosts_file_is()
{
    [[ $("${machine[@]}" cat /etc/hosts) == "$1" ]] || complain "$("${machine[@]}" cat /etc/hosts)"
}

@test "hosts that are not accelerated, and a browser that waits" {
    make_home
    install_daemon
    "${machine[@]}" sh -c 'echo "127.0.0.1 localhost" >/etc/hosts'
    local added=$'192.0.2.10  accelerated.velq.example\n198.51.100.10 accelerated.velq.example'
    velq accelerate --speedup
    says 0 "$(all_of_them '  ! Host acceleration: Off')" '4 problems (bits: 1, 16; told: 1, 16).' \
        'After the repair:' "$(all_of_them '    Host acceleration: On')" 'No problems.'
    [[ $(at_seat person "$app/Contents/Helpers/defaults" read com.apple.Safari WebKitInitialTimedLayoutDelay) == 0.25 ]]
    hosts_file_is $'127.0.0.1 localhost\n'"$added"
    velq accelerate --json
    finds 0 '[0, 0, [], [0, 0, 0, 0]]'
    # A new file, from which the name is gone, gets the lines once more, behind what is there.
    "${machine[@]}" sed -i 's/velq/other/' /etc/hosts
    velq accelerate --speedup --json
    finds 0 '[0, 0, [16], [0, 0, 0, 0]]'
    hosts_file_is $'127.0.0.1 localhost\n'"${added//velq/other}"$'\n'"$added"
}
