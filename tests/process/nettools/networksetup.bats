#!/usr/bin/env bats
# networksetup beside a made-up NetworkManager: what it says, and what it asks for. Root's copies of settings go into
# a folder of the test's own.

# shellcheck source-path=SCRIPTDIR/../../support
source "$BATS_TEST_DIRNAME/../../support/madeupmanager.bash"
source "$BATS_TEST_DIRNAME/../../support/golden.bash"

tool=$VELQ_BUILD/nettools/networksetup
wire=/org/freedesktop/NetworkManager/Settings/0
home=/org/freedesktop/NetworkManager/Settings/1
wired=/org/freedesktop/NetworkManager/Devices/wired
wireless=/org/freedesktop/NetworkManager/Devices/wireless
denial='raise dbus.exceptions.DBusException("no", name="org.freedesktop.NetworkManager.Settings.PermissionDenied")'
copies=/var/lib/velq/profiles
wire_copy=$copies/00000000-0000-4000-8000-000000000001

setup()
{
    need unshare nsenter dbus-daemon gdbus
    need_made_up_manager
    unset VELQ_UID SUDO_UID PKEXEC_UID XDG_CURRENT_DESKTOP XDG_CONFIG_HOME XDG_STATE_HOME
    export HOME=$here GSETTINGS_BACKEND=memory
    programs=$PATH
    make_computer
    start_bus system
    export DBUS_SYSTEM_BUS_ADDRESS
    DBUS_SYSTEM_BUS_ADDRESS=$(bus_address system)
}

teardown()
{
    stop_everything
}

make_computer()
{
    local user=()
    [[ $EUID == 0 ]] || user=(--user --map-root-user)
    "${tied[@]}" unshare "${user[@]}" --net --mount true || skip "the kernel gives a user no namespaces"
    keep_namespaces computer "${user[@]}" --net --mount --propagation private
    inside=(nsenter -t "${pids[computer]}" "${user[@]:+--user}" "${user[@]:+--preserve-credentials}" --net --mount)
    "${inside[@]}" mount -t tmpfs tmpfs /var/lib
}

# call PATH METHOD ARGUMENTS...
call()
{
    gdbus call --system --dest "$manager" --object-path "$1" --method "$2" "${@:3}"
}

# reply PATH INTERFACE METHOD SIGNATURES CODE: makes a method do something else.
reply()
{
    call "$1" org.freedesktop.DBus.Mock.AddMethod "$2" "$3" "$4" "$5" "$6"
}

reply_to_update()
{
    reply "$wire" "$manager.Settings.Connection" Update2 'a{sa{sv}}ua{sv}' 'a{sv}' "$1"
}

set_property()
{
    gdbus call --system --dest "$manager" --object-path "$1" --method org.freedesktop.DBus.Properties.Set "$2" "$3" "$4"
}

networksetup()
{
    status=0
    "${inside[@]}" env PATH="$programs" "$tool" "$@" >"$here/output" 2>"$here/errors" || status=$?
}

# expect_golden NAME ARGUMENTS...
expect_golden()
{
    networksetup "${@:2}"
    is_golden "$1"
}

need_gnome()
{
    need gsettings
    gsettings get org.gnome.system.proxy mode >/dev/null 2>&1 || skip 'needs gsettings-desktop-schemas'
    export GSETTINGS_BACKEND=keyfile
}

# tell ARGUMENTS...: for a transcript, what is called and how it is answered.
tell()
{
    networksetup "$@"
    printf '$ networksetup %s\n' "$*"
    cat "$here/output" "$here/errors"
    printf -- '--- status %s\n' "$status"
}

# Every form once, changes and what takes them back.
tell_forms()
{
    local form kind
    for form in -listallhardwareports -listallnetworkservices -listnetworkserviceorder; do
        tell "$form"
    done
    for form in -getnetworkserviceenabled -getinfo -getdnsservers -getMTU -setdhcp; do
        tell "$form" Ethernet
    done
    tell -setdnsservers Ethernet 10.0.0.53
    tell -getdnsservers Ethernet
    tell -setMTU Ethernet 1500
    tell -ordernetworkservices Ethernet
    for kind in webproxy securewebproxy gopherproxy streamingproxy socksfirewallproxy ftpproxy; do
        tell "-get$kind" Ethernet
        tell "-set$kind" Ethernet proxy.test 8080
        tell "-set${kind}state" Ethernet off
    done
    tell -restore Ethernet
    tell -setnetworkserviceenabled Ethernet off
    tell -setnetworkserviceenabled Ethernet on
}

# expect_forms NAME: what every form says is in golden/NAME.txt.
expect_forms()
{
    local golden=$BATS_TEST_DIRNAME/golden/$1.txt form forms
    forms=$("$tool" --help | sed -n 's/^  \(-[A-Za-z]*\).*/\1/p')
    [[ -n $forms ]]
    tell_forms >"$here/transcript"
    if [[ -n ${VELQ_UPDATE_GOLDEN:-} ]]; then
        cp "$here/transcript" "$golden"
    fi
    diff -u "$golden" "$here/transcript"
    for form in $forms; do
        grep -q -- "^\$ networksetup $form\b" "$here/transcript" || complain "$form was not called"
    done
}

# expect_refusal STATUS SENTENCE ARGUMENTS...
expect_refusal()
{
    networksetup "${@:3}"
    [[ $status == "$1" ]] || complain "status $status of: ${*:3}"
    [[ $(head -n 1 "$here/errors") == "networksetup: $2" ]] || complain "$(cat "$here/errors")"
    [[ ! -s $here/output ]]
}

expect_success()
{
    networksetup "$@"
    [[ $status == 0 ]] || complain "$(cat "$here/errors")"
    [[ ! -s $here/output && ! -s $here/errors ]]
}

# expect_no_call METHODS
expect_no_call()
{
    [[ $(grep -cE " ($1) " "$here/calls") == 0 ]] || complain "$(<"$here/calls")"
}

expect_no_copy()
{
    "${inside[@]}" test ! -e "$wire_copy"
}

expect_no_change()
{
    expect_no_call 'Update2|AddConnection|ActivateConnection|Reapply|Disconnect|Enable|Delete|Set'
    expect_no_copy
}

settings_of_wire()
{
    call "$wire" "$manager.Settings.Connection.GetSettings"
}

@test "what it reads, word for word" {
    start_network_manager
    expect_golden networksetup-ports -listallhardwareports
    expect_golden networksetup-services -listallnetworkservices
    expect_golden networksetup-order -listnetworkserviceorder
    expect_golden networksetup-info-wired -getinfo Ethernet
    expect_golden networksetup-info-wireless -getinfo Wi-Fi
    expect_golden networksetup-dns-none -getdnsservers Wi-Fi
    expect_golden networksetup-mtu -getMTU enp3s0
    expect_golden networksetup-enabled -getnetworkserviceenabled Ethernet
    expect_golden networksetup-proxy -getwebproxy Ethernet
    expect_golden networksetup-help --help
    expect_no_change
}

@test "every form" {
    need_gnome
    start_network_manager
    expect_forms networksetup-forms
}

@test "output that cannot be written is a failure" {
    start_network_manager
    local form
    for form in -listallhardwareports -listallnetworkservices -listnetworkserviceorder; do
        status=0
        "${inside[@]}" "$tool" "$form" >/dev/full 2>"$here/errors" || status=$?
        [[ $status == 1 && $(<"$here/errors") == 'networksetup: standard output: No space left on device' ]]
        status=0
        "${inside[@]}" "$tool" "$form" >&- 2>"$here/errors" || status=$?
        [[ $status == 1 && $(<"$here/errors") == 'networksetup: standard output: Bad file descriptor' ]]
    done
}

@test "the pipelines of those who read it" {
    start_network_manager
    listing=$("${inside[@]}" "$tool" -listallhardwareports | grep -A 2 'Hardware Port' | awk -F ': ' '{print $2}')
    [[ $listing == $'Ethernet\nenp3s0\n78:dd:08:d2:3d:43\n\nWi-Fi\nwlp2s0\n11:22:33:44:55:66\n\n'* ]]
    [[ $listing == *$'\n\nLoopback\nlo\n00:00:00:00:00:00' ]]
    [[ $("${inside[@]}" "$tool" -listallhardwareports | grep -A 1 'Wi-Fi' | grep 'Device' | awk '{print $2}') == wlp2s0 ]]
    [[ $("${inside[@]}" "$tool" -getinfo Ethernet | grep 'Router:' | awk -F': ' '{print $2}') == $'192.168.7.1\nnone' ]]
}

@test "a wrong call is told how it is right" {
    start_network_manager
    expect_golden networksetup-nothing
    expect_golden networksetup-unknown-form -setairportpower en0 on
    expect_golden networksetup-too-few -getinfo
    expect_golden networksetup-too-many -getnetworkserviceenabled Bluetooth PAN
    expect_refusal 2 "'yes' is neither on nor off" -setnetworkserviceenabled Ethernet yes
    expect_refusal 2 "'8.8.8' is not an IP address" -setdnsservers Ethernet 8.8.8.8 8.8.8
    expect_refusal 2 "'empty' is not an IP address" -setdnsservers Ethernet 8.8.8.8 empty
    local mtu
    for mtu in '' -1 67 65536 15OO '1500 ' 99999999999999999999; do
        expect_refusal 2 "'$mtu' is not a number from 68 to 65535" -setMTU Ethernet "$mtu"
    done
    expect_refusal 2 "'a b' is not the name of a host" -setwebproxy Ethernet 'a b' 80
    expect_refusal 2 "'0' is not a port from 1 to 65535" -setwebproxy Ethernet proxy.test 0
    expect_no_change
}

@test "a name that is nobody's" {
    start_network_manager
    local name form
    # shellcheck disable=SC2016 # nothing shall be expanded
    for name in '' ethernet 'Wi-Fi ' '(null)' '$(touch canary)' '`touch canary`' ';touch canary' '*' -rf $'a\nb' "$(printf 'x%.0s' {1..5000})"; do
        for form in -getnetworkserviceenabled -getinfo -setdhcp -getdnsservers -getMTU -restore -getftpproxy -ordernetworkservices; do
            networksetup "$form" "$name"
            [[ $status == 1 && ! -s $here/output ]]
            [[ $(<"$here/errors") == "networksetup: $name is not a recognized network service" ]]
        done
    done
    expect_refusal 1 'Loopback has no settings' -setdhcp Loopback
    expect_no_change
}

@test "a device whose name is a command is left alone" {
    start_network_manager
    # shellcheck disable=SC2016 # nothing shall be expanded
    call /org/freedesktop/NetworkManager org.freedesktop.DBus.Mock.AddEthernetDevice evil '$(reboot)' 30
    expect_golden networksetup-ports -listallhardwareports
}

@test "DNS servers are set, a copy is kept, and all is taken back" {
    start_network_manager
    before=$(settings_of_wire)
    expect_success -setdnsservers Ethernet 10.0.0.53
    expect_golden networksetup-dns -getdnsservers Ethernet
    [[ $("${inside[@]}" stat -c %a "$wire_copy") == 600 ]]
    [[ $("${inside[@]}" stat -c %a "$copies") == 700 ]]
    grep -q ' Reapply ' "$here/calls"
    "${inside[@]}" cp "$wire_copy" /var/lib/first
    expect_success -setdnsservers Ethernet empty
    "${inside[@]}" cmp "$wire_copy" /var/lib/first
    expect_success -restore Ethernet
    [[ $(settings_of_wire) == "$before" ]]
    expect_no_copy
    expect_refusal 1 'nothing has been changed for Ethernet that could be taken back' -restore Ethernet
}

@test "a damaged copy is not written back" {
    start_network_manager
    before=$(settings_of_wire)
    # shellcheck disable=SC2016 # the inner shell's
    "${inside[@]}" sh -c 'mkdir -p "$1" && echo "(a{sa{sv}}" >"$2"' sh "$copies" "$wire_copy"
    expect_refusal 1 'the copy of the settings of Ethernet is damaged' -restore Ethernet
    [[ $(settings_of_wire) == "$before" ]]
    "${inside[@]}" test -e "$wire_copy"
}

@test "without the right, nothing changes" {
    start_network_manager
    before=$(settings_of_wire)
    reply_to_update "$denial"
    expect_refusal 1 'you have not the right to change the network' -setdhcp Ethernet
    expect_refusal 1 'you have not the right to change the network' -setMTU enp3s0 1400
    [[ $(settings_of_wire) == "$before" ]]
    expect_no_copy
}

@test "what NetworkManager has to say is told" {
    start_network_manager
    reply_to_update 'raise dbus.exceptions.DBusException("ipv4.dns: nonsense", name="org.freedesktop.NetworkManager.Settings.Connection.InvalidProperty")'
    expect_refusal 1 'NetworkManager refuses: ipv4.dns: nonsense' -setdnsservers Ethernet 10.0.0.53
}

@test "no copy can be kept: nothing changes" {
    start_network_manager
    "${inside[@]}" touch /var/lib/velq
    networksetup -setdhcp Ethernet
    [[ $status == 1 && $(<"$here/errors") == 'networksetup: no copy of the settings can be kept, so they stay as they are: '* ]]
    expect_no_call Update2
}

@test "NetworkManager stops in the middle of a change" {
    start_network_manager
    reply_to_update 'import os; os._exit(1)'
    expect_refusal 1 'NetworkManager has stopped, or answers no more' -setdnsservers Ethernet 10.0.0.53
}

@test "NetworkManager stops while its work is waited for" {
    start_network_manager
    start tool "${inside[@]}" "${tied[@]}" "$tool" -setdhcp Ethernet
    start log "${tied[@]}" tail -n +1 -F "$here/calls"
    await_line log ' Reapply '
    # It looks once whether the change is in effect, and waits.
    await_line log ' GetManagedObjects$'
    kill -KILL "${pids[manager]}"
    wait_for tool
    [[ $status == 1 && $(<"$here/tool.err") == 'networksetup: NetworkManager has stopped, or answers no more'* ]]
}

@test "NetworkManager hangs: the kernel does not answer for it" {
    start_network_manager
    kill -STOP "${pids[manager]}"
    local started=$EPOCHREALTIME
    expect_refusal 1 'NetworkManager has stopped, or answers no more' -setdhcp Ethernet
    # A call has five times as much without a limit of its own.
    (($(milliseconds_since "$started") < 20000))
}

@test "NetworkManager hangs in the middle of a change" {
    start_network_manager
    before=$(settings_of_wire)
    reply "$wired" "$manager.Device" Reapply 'a{sa{sv}}tu' '' 'import os, signal; os.kill(os.getpid(), signal.SIGSTOP)'
    expect_refusal 1 'NetworkManager has stopped, or answers no more; what is kept of Ethernet may have changed, and -restore takes that back' \
        -setdnsservers Ethernet 10.0.0.53
    kill -CONT "${pids[manager]}"
    reply "$wired" "$manager.Device" Reapply 'a{sa{sv}}tu' '' ''
    expect_success -restore Ethernet
    [[ $(settings_of_wire) == "$before" ]]
}

# reply_to_reading PROFILE CODE
reply_to_reading()
{
    reply "$1" "$manager.Settings.Connection" GetSettings '' 'a{sa{sv}}' "$2"
}

@test "a profile that the caller may not see, or that has just gone, is no reason to refuse the others" {
    local gone='raise dbus.exceptions.DBusException("gone", name="org.freedesktop.DBus.Error.UnknownMethod")' reason
    start_network_manager
    for reason in "$denial" "$gone"; do
        reply_to_reading "$wire" "$reason"
        networksetup -listallnetworkservices
        [[ $status == 0 && $(<"$here/output") == *$'\n*Ethernet\nWi-Fi\n'* ]] || complain "$(cat "$here/output" "$here/errors")"
        networksetup -getinfo Ethernet
        [[ $status == 0 && $(<"$here/output") == *$'\nIP address: 192.168.7.2\n'* ]]
    done
}

@test "NetworkManager ends while several answers are awaited" {
    start_network_manager
    reply_to_reading "$home" 'import os; os._exit(1)'
    expect_refusal 1 'NetworkManager has stopped, or answers no more' -listallnetworkservices
}

@test "the bus ends while several answers are awaited" {
    start_network_manager
    reply_to_reading "$home" "import os; os.kill(${pids[system]}, 9)"
    expect_refusal 1 'NetworkManager has stopped, or answers no more' -listallnetworkservices
}

@test "a change that NetworkManager refuses half way is taken back" {
    start_network_manager
    before=$(settings_of_wire)
    reply "$wired" "$manager.Device" Reapply 'a{sa{sv}}tu' '' "$denial"
    expect_refusal 1 'you have not the right to change the network' -setdnsservers Ethernet 10.0.0.53
    [[ $(settings_of_wire) == "$before" ]]
}

@test "a device vanishes in the middle of a change" {
    start_network_manager
    reply_to_update 'objects["/org/freedesktop/NetworkManager"].Set("org.freedesktop.NetworkManager", "Devices", dbus.Array([], signature="o")); ret = {}'
    expect_refusal 1 'Ethernet has just gone: there is no device enp3s0 any more' -setdhcp Ethernet
}

@test "an MTU that does not come into effect is taken back" {
    start_network_manager
    before=$(settings_of_wire)
    expect_refusal 1 'Ethernet has not come online with these settings in time' -setMTU enp3s0 9000
    [[ $(settings_of_wire) == "$before" ]]
    expect_no_copy
}

@test "a change that NetworkManager has lost over another one is asked for again" {
    start_network_manager
    reply "$wired" "$manager.Device" Reapply 'a{sa{sv}}tu' '' "
self.asked = getattr(self, 'asked', 0) + 1
if self.asked == 2:
    self.UpdateProperties('$manager.Device', {'Mtu': dbus.UInt32(1400)})"
    expect_success -setMTU enp3s0 1400
    [[ $(grep -c ' Reapply ' "$here/calls") == 2 ]]
}

@test "a service is off without its radio, and on again with it" {
    start_network_manager
    set_property /org/freedesktop/NetworkManager "$manager" WirelessEnabled '<false>'
    expect_golden networksetup-disabled -getnetworkserviceenabled Wi-Fi
    expect_golden networksetup-services-disabled -listallnetworkservices
    expect_golden networksetup-order-disabled -listnetworkserviceorder
    expect_success -setnetworkserviceenabled Wi-Fi on
    expect_golden networksetup-enabled -getnetworkserviceenabled Wi-Fi
}

@test "off is for one device: a radio that another one uses stays on" {
    start_network_manager
    expect_success -setnetworkserviceenabled Wi-Fi off
    expect_golden networksetup-disabled -getnetworkserviceenabled Wi-Fi
    expect_golden networksetup-enabled -getnetworkserviceenabled WLAN-wlan1
    expect_success -setnetworkserviceenabled Wi-Fi on
    expect_golden networksetup-enabled -getnetworkserviceenabled Wi-Fi
    expect_success -setnetworkserviceenabled Modem-wwan0 on
    grep -q ' Set .*WwanEnabled.*True' "$here/calls"
    expect_success -setnetworkserviceenabled Modem-wwan0 off
    grep -q ' Set .*WwanEnabled.*False' "$here/calls"
    [[ $(grep -c 'WirelessEnabled' "$here/calls") == 0 ]]
}

@test "a radio that a switch of the computer holds off" {
    start_network_manager
    set_property /org/freedesktop/NetworkManager "$manager" WirelessHardwareEnabled '<false>'
    set_property /org/freedesktop/NetworkManager "$manager" WirelessEnabled '<false>'
    expect_refusal 1 'the radio of Wi-Fi is switched off by a switch of the computer' -setnetworkserviceenabled Wi-Fi on
}

@test "a device that is not managed is managed again" {
    start_network_manager
    set_property "$wireless" "$manager.Device" Managed '<false>'
    expect_golden networksetup-disabled -getnetworkserviceenabled Wi-Fi
    expect_success -setnetworkserviceenabled Wi-Fi on
    expect_golden networksetup-enabled -getnetworkserviceenabled Wi-Fi
}

@test "what cannot be switched on to the end is switched back" {
    start_network_manager
    set_property "$wireless" "$manager.Device" Managed '<false>'
    call "$home" "$manager.Settings.Connection.Update" "{'connection': {'autoconnect': <false>}}"
    reply "$home" "$manager.Settings.Connection" Update2 'a{sa{sv}}ua{sv}' 'a{sv}' "$denial"
    expect_refusal 1 'you have not the right to change the network' -setnetworkserviceenabled Wi-Fi on
    grep -q ' Set .*Managed.*True' "$here/calls"
    [[ $(call "$wireless" org.freedesktop.DBus.Properties.Get "$manager.Device" Managed) == '(<false>,)' ]]
}

@test "a port that knows no network has nothing to change" {
    start_network_manager
    expect_refusal 1 'WLAN-wlan1 uses no network now, and knows none that is in reach' -setdhcp WLAN-wlan1
    expect_no_change
}

@test "services are put in order, and only what must change does" {
    start_network_manager
    expect_success -ordernetworkservices Wi-Fi Ethernet
    expect_golden networksetup-order-new -listnetworkserviceorder
    expect_refusal 1 'Bluetooth is not a recognized network service' -ordernetworkservices Ethernet Bluetooth
    expect_golden networksetup-order-new -listnetworkserviceorder
}

@test "an order that fails is taken back, also where two services share a profile" {
    start_network_manager
    set_property /org/freedesktop/NetworkManager/Devices/wireless1 "$manager.Device" AvailableConnections "<[objectpath '$home']>"
    local before
    before=$(call "$home" "$manager.Settings.Connection.GetSettings")
    reply "$wired" "$manager.Device" Reapply 'a{sa{sv}}tu' '' "$denial"
    expect_refusal 1 'you have not the right to change the network' -ordernetworkservices Wi-Fi WLAN-wlan1 Ethernet
    grep -q ' Update2 ' "$here/calls"
    [[ $(call "$home" "$manager.Settings.Connection.GetSettings") == "$before" ]]
    "${inside[@]}" find "$copies" -type f | diff - /dev/null
}

@test "a user's copies are in the user's home" {
    [[ $EUID == 0 ]] || skip "only root can become a user"
    start_network_manager
    mkdir "$here/state"
    chown 65534 "$here/state"
    chmod 711 "$BATS_RUN_TMPDIR" "$BATS_RUN_TMPDIR"/* "$here" || true
    tool_as_user=(setpriv --reuid 65534 --clear-groups env XDG_STATE_HOME="$here/state" "$tool")
    "${inside[@]}" "${tool_as_user[@]}" -setdnsservers Ethernet empty
    [[ $(stat -c '%a %u' "$here/state/velq/profiles/00000000-0000-4000-8000-000000000001") == '600 65534' ]]
}

make_wired_network()
{
    "${inside[@]}" ip -batch - <<'LINES'
link set lo up
link add lan0 index 10 address 02:00:00:00:00:01 type veth peer name far0 index 11 address 02:00:00:00:00:02
link set lan0 up
link set far0 up
addr add 192.168.7.2/24 dev lan0
route add default via 192.168.7.1
LINES
}

@test "without NetworkManager the kernel answers" {
    make_wired_network
    expect_golden networksetup-kernel-ports -listallhardwareports
    expect_golden networksetup-kernel-info -getinfo Ethernet
    expect_success -setMTU lan0 1400
    expect_golden networksetup-kernel-mtu -getMTU Ethernet
    expect_success -setnetworkserviceenabled LAN-far0 off
    expect_golden networksetup-kernel-order -listnetworkserviceorder
    expect_success -setnetworkserviceenabled LAN-far0 on
    expect_golden networksetup-kernel-no-order -ordernetworkservices Ethernet
    expect_golden networksetup-kernel-no-restore -restore Ethernet
}

@test "without NetworkManager, every form" {
    need_gnome
    make_wired_network
    # What the kernel's backend writes into is the test's own, and no DHCP client is to be found.
    mkdir "$here/etc"
    cp -a /etc/. "$here/etc"
    rm -f "$here/etc/resolv.conf"
    "${inside[@]}" mount --bind "$here/etc" /etc
    programs=$here/programs
    mkdir "$programs"
    ln -s "$(command -v gsettings)" "$programs"
    expect_forms networksetup-kernel-forms
}

@test "NetworkManager is not started by being asked" {
    stop system
    mkdir "$here/services"
    printf '%s\n' '[D-BUS Service]' "Name=$manager" "Exec=/bin/touch $here/started" >"$here/services/$manager.service"
    sed -i "s|</busconfig>|<servicedir>$here/services</servicedir></busconfig>|" "$here/system.conf"
    start activating "${tied[@]}" dbus-daemon --config-file="$here/system.conf" --nofork --print-address
    expect_line activating '^unix:'
    networksetup -listallhardwareports
    [[ $status == 0 && $(<"$here/output") == *'Hardware Port: Loopback'* ]]
    [[ ! -e $here/started ]]
    # The bus would have: nothing else kept it from doing so.
    gdbus call --system --dest "$manager" --object-path / --method org.freedesktop.DBus.Peer.Ping || true
    [[ -e $here/started ]]
}

@test "without a bus the kernel answers, too" {
    export DBUS_SYSTEM_BUS_ADDRESS=unix:path=/nonexistent
    networksetup -listallhardwareports
    [[ $status == 0 && $(<"$here/output") == *'Hardware Port: Loopback'* ]]
}
