# shellcheck shell=bash
# A home network in a box: a router that gives leases and answers names, and a computer with a real NetworkManager on
# a system bus of its own, in namespaces that end with the test. The machine's own network, resolver, buses and
# network manager are out of its reach.

# shellcheck source-path=SCRIPTDIR/../support
source "$(dirname "${BASH_SOURCE[0]}")/../support/monitor.bash"

# The words before a command on the router; the computer is where everything else of the test runs.
router=()
# Of dnsmasq, beside those that make it give leases and answer names.
router_options=()

need_lab()
{
    [[ $EUID == 0 ]] || skip "only root can make a laboratory"
    need ip unshare nsenter setpriv mount dnsmasq NetworkManager nmcli nm-online dbus-daemon dbus-send
}

# A switch with the router on it, and a wire from it to the computer's eth0.
make_lab()
{
    keep_namespaces router --net
    keep_namespaces computer --net --uts --mount --propagation private
    router=(nsenter -t "${pids[router]}" --net)
    inside=(nsenter -t "${pids[computer]}" --net --uts --mount)
    "${router[@]}" ip -batch - <<LINES
link set lo up
link add switch0 type bridge
link add lan0 type veth peer name eth0 netns ${pids[computer]}
link set lan0 master switch0
link set lan0 up
link set switch0 up
addr add 192.168.77.1/24 dev switch0
addr add fd77::1/64 dev switch0 nodad
LINES
    make_private_system
    make_surroundings
}

# The computer sees only its own devices, and has folders of its own for what NetworkManager writes. It has a name of
# its own, too: a lease may bring one.
make_private_system()
{
    "${inside[@]}" sh -e <<'SCRIPT'
ip link set lo up
mount -t sysfs -o ro sysfs /sys
mount -t tmpfs tmpfs /var/lib/NetworkManager
mount -t tmpfs tmpfs /run
mkdir /run/NetworkManager /run/etc
cp -a /etc/. /run/etc
rm -f /run/etc/resolv.conf
mount --bind /run/etc /etc
SCRIPT
}

# Not a daemon of any kind: one that changes its rights is tied to the test no more.
start_router()
{
    start dnsmasq "${router[@]}" "${tied[@]}" dnsmasq --no-daemon --conf-file=/dev/null \
        --no-resolv --no-hosts --no-ping --interface=switch0 --bind-interfaces \
        --dhcp-leasefile="$here/leases" --dhcp-authoritative --dhcp-range=192.168.77.50,192.168.77.99,1h \
        --address=/probe.test/192.168.77.1 "${router_options[@]}"
}

# start_network_manager NAME
start_network_manager()
{
    mkdir -p "$here/profiles" "$here/none"
    cat >"$here/NetworkManager.conf" <<CONFIG
[main]
dhcp=internal
plugins=keyfile
[keyfile]
path=$here/profiles
[device-all]
match-device=*
managed=1
CONFIG
    start "$1" "${inside[@]}" "${tied[@]}" "${surroundings[@]}" NetworkManager --no-daemon \
        --config="$here/NetworkManager.conf" --config-dir="$here/none" --system-config-dir="$here/none" \
        --intern-config="$here/intern.conf" --state-file="$here/state" --pid-file="$here/network_manager.pid"
}

nmcli_inside()
{
    "${inside[@]}" "${surroundings[@]}" nmcli --wait 30 "$@"
}
