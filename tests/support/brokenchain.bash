# shellcheck shell=bash
# A chain from the computer to the internet whose links break as the test says: the answers of the tools that the
# diagnosis asks. As it comes, only the internet is silent.

# shellcheck source-path=SCRIPTDIR/../support
source "$(dirname "${BASH_SOURCE[0]}")/velq.bash"

make_chain()
{
    fake ping 'exit 1'
    fake nslookup 'echo "Server: 192.168.7.1"'
    fake route 'printf "    gateway: 192.168.7.1\n  interface: lan0\n"'
    fake ifconfig 'printf "lan0: flags\n\tinet 192.168.7.2 netmask 0xffffff00 broadcast 192.168.7.255\n\tstatus: active\n"'
    fake_services ''
}

# fake_services PROXY: one service, and the form of the tool that finds a proxy switched on; the last port is never
# looked at.
fake_services()
{
    fake networksetup "case \$1 in
-listallhardwareports)
    printf '\nHardware Port: Wi-Fi\nDevice: lan0\nEthernet Address: 02:00:00:00:00:08\n'
    printf '\nHardware Port: Loopback\nDevice: lo\nEthernet Address: 00:00:00:00:00:00\n' ;;
-getnetworkserviceenabled) echo Enabled ;;
-get${1:-no}proxy) printf 'Enabled: Yes\nServer: proxy.test\nPort: 3128\nAuthenticated Proxy Enabled: 1\n' ;;
-get*proxy) printf 'Enabled: No\nServer:\nPort: 0\nAuthenticated Proxy Enabled: 0\n' ;;
esac"
}

break_link()
{
    fake ifconfig 'printf "lan0: flags\n\tstatus: inactive\n"'
}

break_address()
{
    fake route 'printf "    gateway: 10.0.0.1\n  interface: lan0\n"'
}

break_name_servers()
{
    fake nslookup 'echo ";; connection timed out; no servers could be reached"'
}

use_proxy()
{
    fake_services web
    ask ignore NetworkKey4
}

# The internet answers from the second time that it is asked.
answer_later()
{
    fake ping "if [ -e '$here/asked' ]; then echo 'time=1 ms'; fi; : >'$here/asked'"
}
