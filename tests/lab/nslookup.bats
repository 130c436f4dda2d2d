#!/usr/bin/env bats
# nslookup beside real name servers: what it says of them, and of their absence.

source "$BATS_TEST_DIRNAME/lab.bash"

unreached=$';; connection timed out; no servers could be reached\n'

setup()
{
    need_lab
    make_lab
    "${inside[@]}" ip -batch - <<'LINES'
link set eth0 up
addr add 192.168.77.2/24 dev eth0
addr add fd77::2/64 dev eth0 nodad
LINES
    router_options=('--local=/test/' '--host-record=a.test,192.168.77.1' '--cname=www.test,a.test'
        '--host-record=six.test,fd77::7')
    start_router
    await_line_in dnsmasq.err started
    use_servers 192.168.77.1
}

teardown()
{
    stop_everything
}

await_line_in()
{
    until_true grep -q "$2" "$here/$1"
}

use_servers()
{
    printf 'nameserver %s\n' "$@" | "${inside[@]}" sh -c 'cat >/etc/resolv.conf'
}

# expect STATUS TEXT HOST: on standard output, with nothing on standard error.
expect()
{
    status=0
    "${inside[@]}" "$VELQ_BUILD/nettools/nslookup" "$3" >"$here/output" 2>"$here/errors" || status=$?
    # The dot keeps the line ends that a substitution would cut off.
    diff -u <(printf '%s\n' "${2%.}") "$here/output"
    [[ $status == "$1" && ! -s $here/errors ]] || complain "$status: $(<"$here/errors")"
}

# expect_from STATUS SERVER TEXT HOST
expect_from()
{
    expect "$1" "$(printf 'Server:\t\t%s\nAddress:\t%s#53\n\n%b.' "$2" "$2" "$3")" "$4"
}

# A server on 127.0.0.53 that knows of no other one, and says so.
start_stub()
{
    start stub "${inside[@]}" "${tied[@]}" dnsmasq --no-daemon --conf-file=/dev/null --no-resolv --no-hosts \
        --listen-address=127.0.0.53 --bind-interfaces
    await_line_in stub.err started
}

use_stub()
{
    start_stub
    use_servers 127.0.0.53
    "${inside[@]}" mkdir -p /run/systemd/resolve
    printf 'nameserver %s\n' "$@" | "${inside[@]}" sh -c 'cat >/run/systemd/resolve/resolv.conf'
}

@test "what a server says, word for word" {
    expect_from 0 192.168.77.1 'Name:\ta.test\nAddress: 192.168.77.1\n' a.test
    expect_from 0 192.168.77.1 'www.test\tcanonical name = a.test.\nName:\ta.test\nAddress: 192.168.77.1\n' www.test
    expect_from 0 192.168.77.1 'Name:\tsix.test\nAddress: fd77::7\n' six.test
    expect_from 1 192.168.77.1 "** server can't find nobody.test: NXDOMAIN\n" nobody.test
    expect_from 1 192.168.77.1 "** server can't find elsewhere.invalid: REFUSED\n" elsewhere.invalid
    use_servers fd77::1
    expect_from 0 fd77::1 'Name:\ta.test\nAddress: 192.168.77.1\n' a.test
}

@test "a name server that was killed is found out, and at once" {
    stop dnsmasq
    once_within 1000 expect 1 "$unreached" a.test
}

@test "a name server that says nothing is found out in five seconds" {
    kill -STOP "${pids[dnsmasq]}"
    once_within 6000 expect 1 "$unreached" a.test
    kill -CONT "${pids[dnsmasq]}"
    expect_from 0 192.168.77.1 'Name:\ta.test\nAddress: 192.168.77.1\n' a.test
}

@test "no way to any server, and no server at all" {
    "${inside[@]}" ip link set eth0 down
    expect 1 "$unreached" a.test
    use_servers ''
    expect 1 "$unreached" a.test
    "${inside[@]}" rm /etc/resolv.conf
    expect 1 "$unreached" a.test
}

@test "the next server stands in for one that is dead" {
    use_servers 192.168.77.9 nonsense 192.168.77.1
    expect_from 0 192.168.77.1 'Name:\ta.test\nAddress: 192.168.77.1\n' a.test
}

@test "one that speaks for others does not hide that they are dead" {
    use_stub 192.168.77.1
    expect_from 0 192.168.77.1 'Name:\ta.test\nAddress: 192.168.77.1\n' a.test
    stop dnsmasq
    expect 1 "$unreached" a.test
}

@test "a name that is none" {
    run "${inside[@]}" "$VELQ_BUILD/nettools/nslookup" "$(printf 'x%.0s' {1..300}).test"
    [[ $status == 1 && $output == "nslookup: 'xxx"*"' is not the name of a host" ]]
}
