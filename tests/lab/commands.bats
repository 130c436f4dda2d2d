#!/usr/bin/env bats
# The command lines that change the system, run by the root daemon under its own unit, each seen to have its effect.

source "$BATS_TEST_DIRNAME/../support/homenetwork.bash"

setup()
{
    need_home_network
    make_home_network
}

teardown()
{
    stop_machine
    stop_everything
}

# as_root LINE: what the person at the screen has run; the command's exit status is the last thing it prints.
as_root()
{
    at_seat person busctl --json=short call -- com.zelmor.VelqDamonObject /VelqDamonObject com.zelmor.VelqDamonObject \
        runShell sas /bin/sh 2 -c "{ $1; } 2>&1; echo status \$?"
}

succeeds()
{
    local answer
    answer=$(as_root "$1")
    [[ $answer == *'status 0\n"]}' ]] || complain "'$1' answered $answer"
}

is_refused()
{
    [[ $(as_root "$1") == *'status 1\n"]}' ]]
}

shows()
{
    [[ $("${machine[@]}" "${@:2}") == *"$1"* ]] || complain "$* shows $("${machine[@]}" "${@:2}")"
}

@test "interfaces and services are switched" {
    "${machine[@]}" ip link set lan0 down
    succeeds 'ifconfig lan0 up'
    shows '<BROADCAST,MULTICAST,UP' ip link show lan0
    tool networksetup -setnetworkserviceenabled Ethernet off
    succeeds 'networksetup -setnetworkserviceenabled Ethernet on'
    [[ $(tool networksetup -getnetworkserviceenabled Ethernet) == Enabled ]]
    succeeds 'networksetup -setdhcp Ethernet'
    shows 'inet 192.168.77.' ip addr show lan0
    # There is none; that is said, and nothing else happens.
    is_refused 'networksetup -setdhcp Wi-Fi'
    is_refused 'networksetup -setnetworkserviceenabled Wi-Fi on'
}

@test "name servers are set" {
    succeeds 'sudo networksetup -setdnsservers Ethernet 8.8.8.8 8.8.4.4'
    [[ $(tool networksetup -getdnsservers Ethernet) == $'8.8.8.8\n8.8.4.4' ]]
    succeeds "networksetup -setdnsservers Ethernet $(echo 192.0.2.{1..16})"
    [[ $(tool networksetup -getdnsservers Ethernet) == "$(printf '192.0.2.%s\n' {1..16})" ]]
}

@test "the size of packets is set" {
    succeeds 'networksetup -setMTU lan0 1400'
    shows 'mtu 1400' ip link show lan0
}

@test "services are put in order" {
    succeeds 'sudo networksetup -ordernetworkservices Ethernet'
    shows 'metric 50' ip route show default
    is_refused 'sudo networksetup -ordernetworkservices Ethernet Wi-Fi'
}

@test "the hosts file is opened to all, gets lines, and is read" {
    succeeds 'chmod 777 /etc/hosts'
    shows 777 stat -c %a /etc/hosts
    succeeds "sudo echo '192.0.2.1 one.test
192.0.2.2 two.test'>>/etc/hosts"
    shows $'192.0.2.1 one.test\n192.0.2.2 two.test' cat /etc/hosts
    [[ $(as_root 'cat /etc/hosts|grep two.test') == *'192.0.2.2 two.test'* ]]
}
