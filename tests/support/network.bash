# shellcheck shell=bash
# A network namespace of the test's own, with one wire lan0—far0 and no way out. As root, and as a user where
# the kernel allows it.

# shellcheck source-path=SCRIPTDIR/../support
source "$(dirname "${BASH_SOURCE[0]}")/processes.bash"

# The words before a command that is to run in it.
inside=()

# keep_namespaces NAME OPTIONS...: unshare's; what they make lives as long as the process NAME.
keep_namespaces()
{
    local name=$1
    shift
    start "$name" unshare "$@" "${tied[@]}" sh -c 'echo ready; exec sleep infinity'
    next_line "$name" && [[ $line == ready ]]
}

make_network()
{
    if [[ $EUID == 0 ]]; then
        keep_namespaces network --net || complain "$(report network)"
        inside=(nsenter -t "${pids[network]}" --net)
    else
        unshare --user --map-root-user --net true || skip "the kernel gives a user no network namespace"
        keep_namespaces network --user --map-root-user --net
        inside=(nsenter -t "${pids[network]}" --user --preserve-credentials --net)
    fi
    ip_batch <<'LINES'
link set lo up
link add lan0 type veth peer name far0
link set lan0 up
link set far0 up
addr add 192.168.7.2/24 dev lan0
LINES
}

ip_batch()
{
    "${inside[@]}" ip -batch -
}

connect()
{
    "${inside[@]}" ip route add default via 192.168.7.1
}

disconnect()
{
    "${inside[@]}" ip route del default
}

# The cable of lan0.
pull_cable()
{
    "${inside[@]}" ip link set far0 down
}

put_cable_back()
{
    "${inside[@]}" ip link set far0 up
}
