#!/usr/bin/env bats
# networksetup as root on behalf of a person: whose settings it changes, and as whom.

# shellcheck source-path=SCRIPTDIR/../../support
source "$BATS_TEST_DIRNAME/../../support/daemon.bash"

tools=/usr/libexec/velq/nettools
anna=4001
kio=/home/anna/.config/kioslaverc

setup()
{
    need gsettings
    gsettings get org.gnome.system.proxy mode >/dev/null 2>&1 || skip 'needs gsettings-desktop-schemas'
    [[ -x /usr/libexec/dconf-service ]] || skip 'needs dconf-service'
    boot_with_daemon
    "${machine[@]}" ip link add lan0 type veth peer name far0
    "${machine[@]}" ip link set lan0 up
    put "$VELQ_BUILD/nettools/networksetup" "$tools/networksetup" 0755
    add_user anna "$anna"
}

teardown()
{
    expect_no_sanitizer_report
    stop_machine
    stop_everything
}

# Her service manager and her bus run, whether she has a session or not.
anna_is_here()
{
    "${machine[@]}" loginctl enable-linger anna
    "${machine[@]}" systemctl start "user@$anna.service"
}

# for_person VARIABLE=UID FORM WORDS...: by root.
for_person()
{
    local service=${service:-$("${machine[@]}" "$tools/networksetup" -listallnetworkservices | sed -n '2{s|^[*]||;p}')}
    "${machine[@]}" env "$1" HOME=/root XDG_CONFIG_HOME=/root/.config XDG_STATE_HOME=/root/.local/state \
        "$tools/networksetup" "$2" "$service" "${@:3}"
}

# setting KEYS...: what her own tool says.
setting()
{
    from_afar anna gsettings get "$@"
}

expect_only_hers()
{
    local strange
    strange=$("${machine[@]}" find /home/anna -not -user anna)
    [[ -z $strange ]] || complain "$strange"
    "${machine[@]}" test ! -e /root/.config/kioslaverc -a ! -e /root/.config/dconf -a ! -e /root/.local/state/velq
}

@test "the settings of a person who is here change, and nobody else's" {
    anna_is_here
    for_person VELQ_UID=$anna -setwebproxy proxy.test 3128
    [[ $(setting org.gnome.system.proxy mode) == "'manual'" ]]
    [[ $(setting org.gnome.system.proxy.http host) == "'proxy.test'" ]]
    for_person VELQ_UID=$anna -setwebproxystate off
    [[ $(setting org.gnome.system.proxy mode) == "'none'" ]]
    [[ $(for_person SUDO_UID=$anna -getwebproxy) == $'Enabled: No\nServer: proxy.test\n'* ]]
    for_person PKEXEC_UID=$anna -setwebproxystate on
    [[ $(setting org.gnome.system.proxy.http host) == "'proxy.test'" ]]
    [[ $(for_person VELQ_UID=0 -getwebproxy) == $'Enabled: No\nServer: \n'* ]]
    expect_only_hers
}

@test "which desktop is theirs, their service manager knows" {
    anna_is_here
    from_afar anna systemctl --user set-environment XDG_CURRENT_DESKTOP=KDE
    for_person VELQ_UID=$anna -setftpproxy proxy.test 21
    [[ $(<"$machine_root$kio") == $'[Proxy Settings]\nProxyType=1\nftpProxy=http://proxy.test 21' ]]
    [[ $(setting org.gnome.system.proxy mode) == "'none'" ]]
    for_person VELQ_UID=$anna -setftpproxystate off
    [[ $(<"$machine_root/home/anna/.local/state/velq/proxies/kde") == 'ftp http://proxy.test 21' ]]
    expect_only_hers
}

@test "a person who is not here is told that nothing has changed" {
    [[ $(for_person VELQ_UID=$anna -getwebproxy) == $'Enabled: No\nServer: \n'* ]]
    run for_person VELQ_UID=$anna -setwebproxy proxy.test 3128
    [[ $status == 1 && $output == "networksetup: the desktop's settings have not taken the change"* ]]
    [[ $(for_person VELQ_UID=$anna -getwebproxy) == $'Enabled: No\nServer: \n'* ]]
    expect_only_hers
}

@test "what a person may not write, root does not write for them" {
    anna_is_here
    from_afar anna systemctl --user set-environment XDG_CURRENT_DESKTOP=KDE
    from_afar anna mkdir .config
    from_afar anna ln -s /etc/target "$kio"
    echo '[Proxy Settings]' >"$machine_root/etc/target"
    chmod 644 "$machine_root/etc/target"
    run for_person VELQ_UID=$anna -setwebproxy proxy.test 3128
    [[ $status == 1 && $output == *'Permission denied' ]]
    [[ $(<"$machine_root/etc/target") == '[Proxy Settings]' ]]
    chmod 600 "$machine_root/etc/target"
    run for_person VELQ_UID=$anna -getwebproxy
    [[ $status == 1 && $output == *'Permission denied' ]]
    expect_only_hers
}

@test "a number that is nobody's" {
    local number
    for number in 4999 '' -1 4294967295 99999999999 4001x anna; do
        run for_person "VELQ_UID=$number" -setwebproxy proxy.test 3128
        [[ $status == 1 && $output == "networksetup: nobody here has the number '$number'" ]]
    done
}

# has_answer TEXT LINE: what the root daemon answers her.
has_answer()
{
    at_seat anna busctl call -- "$bus_name" /VelqDamonObject "$bus_name" runShell sas /bin/sh 2 -c "$2 2>&1" >"$here/answer"
    [[ $(<"$here/answer") == "s \"$1\"" ]] || complain "$2: $(<"$here/answer")"
}

@test "through the root daemon it is the caller's" {
    anna_is_here
    grant "$anna" anna
    local service kind schema unknown='networksetup: the desktop has no setting for such a proxy\n'
    service=$("${machine[@]}" "$tools/networksetup" -listallnetworkservices | sed -n '2{s|^[*]||;p}')
    while read -r kind schema; do
        has_answer '' "networksetup -set${kind}proxy $service proxy.test 3128"
        [[ $(setting "org.gnome.system.proxy.$schema" host) == "'proxy.test'" ]]
        has_answer '' "networksetup -set${kind}proxystate $service off"
        [[ $(setting org.gnome.system.proxy mode) == "'none'" ]]
        has_answer '' "networksetup -set${kind}proxystate $service on"
        [[ $(setting org.gnome.system.proxy mode) == "'manual'" ]]
        has_answer '' "networksetup -set${kind}proxystate $service off"
    done <<'KINDS'
web http
secureweb https
socksfirewall socks
ftp ftp
KINDS
    for kind in gopher streaming; do
        has_answer "$unknown" "networksetup -set${kind}proxystate $service on"
        has_answer "$unknown" "networksetup -set${kind}proxystate $service off"
    done
    expect_only_hers
}
