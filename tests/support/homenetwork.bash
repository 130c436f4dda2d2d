# shellcheck shell=bash
# A booted machine on a home network: a router that gives leases, a wire to it, a real NetworkManager, and a person at
# the screen for whom the root daemon is installed.

# shellcheck source-path=SCRIPTDIR/../support
source "$(dirname "${BASH_SOURCE[0]}")/machine.bash"

app=/opt/VelqMonitor.app
# Of dnsmasq, beside those that make it give leases.
router_options=()

need_home_network()
{
    need_machine
    need ip dnsmasq NetworkManager nmcli script
}

make_home_network()
{
    make_home
    start_home_network_manager
    install_daemon
}

make_home()
{
    # shellcheck disable=SC2119 # no options
    boot_machine
    add_user person 4001
    add_router
    start_home_router
}

# It lives in a network namespace inside the machine, and ends with it.
add_router()
{
    "${machine[@]}" ip netns add router
    "${machine[@]}" ip link add lan0 type veth peer name far0 netns router
    "${machine[@]}" ip -n router -batch - <<'LINES'
link set lo up
link set far0 up
addr add 192.168.77.1/24 dev far0
LINES
}

# It goes into the background once it listens.
start_home_router()
{
    "${machine[@]}" systemd-run --quiet --unit=router --property=Type=forking ip netns exec router dnsmasq \
        --user=root --pid-file= --conf-file=/dev/null --no-resolv --no-hosts --no-ping --interface=far0 --bind-interfaces \
        --dhcp-leasefile=/run/router.leases --dhcp-authoritative --dhcp-range=192.168.77.50,192.168.77.99,1h \
        "${router_options[@]}"
}

start_home_network_manager()
{
    "${machine[@]}" sh -c 'cat >/etc/NetworkManager/conf.d/velq.conf' <<'CONFIG'
[main]
dhcp=internal
plugins=keyfile
[device-all]
match-device=*
managed=1
CONFIG
    "${machine[@]}" sh -c 'rm -f /etc/resolv.conf; touch /etc/resolv.conf'
    "${machine[@]}" systemctl start NetworkManager
    "${machine[@]}" timeout "$patience" nm-online --quiet --timeout="$patience"
}

# As pkexec would run the script for the person.
install_daemon()
{
    local resources=$VELQ_BUILD/VelqMonitor.app/Contents/Resources digest
    digest=$(sha256sum <"$resources/copy.sh")
    "${machine[@]}" env PKEXEC_UID=4001 sh -c "$(<"$VELQ_BUILD/resources/VelqDemon/bootstrap.sh")" velq-install \
        "${digest%% *}" "$resources/copy.sh" "$resources/VelqDemon" "$resources/com.zelmor.VelqDemon.plist" >/dev/null
    # The checkout may be out of the person's reach.
    "${machine[@]}" cp -rL "$VELQ_BUILD/VelqMonitor.app" "$app"
}

# All that has been written there by now.
journal_of_daemon()
{
    "${machine[@]}" journalctl --sync
    "${machine[@]}" journalctl --quiet --unit=com.zelmor.VelqDemon
}

# The words before a command of the tools'.
tool()
{
    "${machine[@]}" "$app/Contents/Helpers/$1" "${@:2}"
}

# The faults that a repair is for, and the one that none helps against.

take_interface_down()
{
    "${machine[@]}" ip link set lan0 down
}

switch_service_off()
{
    tool networksetup -setnetworkserviceenabled Ethernet off
}

service_is()
{
    [[ $(tool networksetup -getnetworkserviceenabled Ethernet) == "$1" ]]
}

profile_of_lan()
{
    "${machine[@]}" nmcli --get-values GENERAL.CONNECTION device show lan0
}

# set_up_profile SETTINGS...: changed in the profile in use, whose name profile is then, and in effect.
set_up_profile()
{
    profile=$(profile_of_lan)
    "${machine[@]}" nmcli connection modify "$profile" "$@"
    "${machine[@]}" nmcli connection up "$profile" >/dev/null
}

set_wrong_address()
{
    set_up_profile ipv4.method manual ipv4.addresses 10.9.9.9/24 ipv6.method disabled
}

profile_asks_for_address()
{
    [[ $("${machine[@]}" nmcli --get-values ipv4.method connection show "$profile") == auto ]]
}

# The kernel and NetworkManager each learn of it in their own time.
pull_home_cable()
{
    "${machine[@]}" ip -n router link set far0 down
    until_true cable_is out
}

put_home_cable_back()
{
    "${machine[@]}" ip -n router link set far0 up
    until_true cable_is in
}

cable_is()
{
    local lower_up=LOWER_UP carrier=on
    [[ $1 == in ]] || { lower_up=NO-CARRIER carrier=off; }
    [[ $("${machine[@]}" ip link show dev lan0) == *[\<,]"$lower_up"[\>,]* \
        && $("${machine[@]}" nmcli --get-values WIRED-PROPERTIES.CARRIER device show lan0) == "$carrier" ]]
}
