#!/usr/bin/env bats
# Who may have commands run by the root daemon.

source "$BATS_TEST_DIRNAME/../support/daemon.bash"

setup()
{
    boot_with_daemon
}

teardown()
{
    stop_machine
    stop_everything
}

matrix=(/usr/bin/python3 "$BATS_TEST_DIRNAME/daemon/matrix.py")
call=(busctl call -- "$bus_name" /VelqDamonObject "$bus_name" runShell sas /bin/sh 2 -c 'id -u')
strangers=(1 8 13 33 2002 2003 65534)

add_people()
{
    add_user anna 2001
    add_user bert 2002
    add_user carl 2003
    grant 2001 anna
}

# try_everything UID: what a user without a grant hears to everything there is to try; the lines are added to $here/matrix.
try_everything()
{
    as "$1" "${matrix[@]}" /run/served-"$1" >>"$here/matrix"
}

expect_matrix()
{
    local lines refused
    lines=$(wc -l <"$here/matrix")
    refused=$(grep -cE "$1" "$here/matrix" || true)
    echo "$refused of $lines refused"
    [[ $lines -ge $2 && $refused == "$lines" ]] || complain "$(grep -vE "$1" "$here/matrix")"
    ! compgen -G "$machine_root/run/served-*" || complain 'something ran'
}

@test "the bus lets nobody through who is not named, and starts nothing for them" {
    add_people
    for uid in "${strangers[@]}"; do
        try_everything "$uid"
    done
    [[ $(daemon_pid) == 0 ]]
    expect_matrix ' org.freedesktop.DBus.Error.AccessDenied$' 126
}

@test "nor does it while the daemon runs, by either name" {
    add_people
    daemon_options --idle 1000
    run_shell true
    for uid in "${strangers[@]}"; do
        try_everything "$uid"
    done
    expect_matrix ' org.freedesktop.DBus.Error.AccessDenied$' 252
    [[ -z $(records VELQ_VERDICT=NotAuthorized) ]]
}

@test "with a bus that lets everybody through, the daemon itself refuses" {
    add_people
    everybody_may_send
    polkit_rule 'return polkit.Result.YES;'
    daemon_options --idle 1000
    run_shell true
    for uid in "${strangers[@]}"; do
        try_everything "$uid"
    done
    expect_matrix " $bus_name.Error.NotAuthorized\$" 252
    expect_record VELQ_VERDICT=NotAuthorized VELQ_UID=2002
    expect_no_sanitizer_report
}

@test "root without a grant is nobody" {
    rm "$machine_root/etc/velq/authorized.d/0"
    run ! run_shell true
    [[ $output == *'Not authorized'* ]]
}

@test "root with one is served" {
    [[ $(run_shell 'id -u') == 's "0\n"' ]]
}

@test "a person at the seat is served" {
    add_people
    run at_seat anna "${call[@]}"
    [[ $output == 's "0\n"' ]]
    at_seat anna "${matrix[@]}" /run/served-by-seat >"$here/matrix"
    [[ $(grep -c ' served$' "$here/matrix") == 4 ]]
    [[ -e $machine_root/run/served-by-seat ]]
}

@test "the same person from afar is not, nor without a session" {
    add_people
    run ! from_afar anna "${call[@]}"
    [[ $output == *'Not authorized'* ]]
    run ! as 2001 "${call[@]}"
    [[ $output == *'Not authorized'* ]]
}

# until_active USER: that person's session is the one at the screen.
until_active()
{
    local deadline=$((EPOCHSECONDS + patience))
    until [[ $("${machine[@]}" loginctl show-user -P State "$1" 2>/dev/null) == active ]]; do
        ((EPOCHSECONDS < deadline)) || complain "$1 is not at the screen"
        pause 0.05
    done
}

@test "nor while another has the screen" {
    add_people
    # shellcheck disable=SC2016 # the shell's own
    start waiting at_seat anna sh -c "$wait_for_go"'; exec "$@"' sh "${call[@]}"
    until_active anna
    start other at_seat bert sleep 1000
    until_active bert
    touch "$machine_root/run/go"
    wait_for waiting
    [[ $status != 0 && $(<"$here/waiting.err") == *'Not authorized'* ]]
}

@test "a person who was renamed has no grant" {
    add_people
    "${machine[@]}" usermod --login hanna anna
    run ! at_seat hanna "${call[@]}"
    [[ $output == *'Not authorized'* ]]
    expect_record VELQ_REASON='the grant is another'\''s'
}

@test "what polkit's rules say goes before its defaults" {
    add_people
    polkit_rule 'return polkit.Result.NO;'
    run ! at_seat anna "${call[@]}"
    polkit_rule 'return polkit.Result.AUTH_ADMIN;'
    run ! at_seat anna "${call[@]}"
    [[ $output == *'Not authorized'* ]]
}

@test "nobody but root takes the daemon's name" {
    add_people
    for uid in 2001 2002 65534; do
        run ! as "$uid" busctl call org.freedesktop.DBus /org/freedesktop/DBus org.freedesktop.DBus \
            RequestName su "$bus_name" 0
        [[ $output == *'Access'* || $output == *'not allowed'* ]]
    done
}

@test "it is the bus that says who calls" {
    add_people
    everybody_may_send
    run in_machine borrowed.py
    [[ ${lines[0]} == "connected as 2002, calling as 0: $bus_name.Error.NotAuthorized" ]]
    [[ ${lines[1]} == "connected as 0, calling as 2002: served" ]]
}

@test "no descriptor reaches it, whatever the bus lets through" {
    everybody_may_send
    run in_machine malformed.py descriptor
    [[ $output == 'a descriptor refused: '* ]] || complain "$output"
}

@test "a call of another form is refused" {
    run in_machine malformed.py
    echo "$output"
    [[ ${#lines[@]} -ge 12 ]]
    for line in "${lines[@]}"; do
        [[ $line == *' refused: '* ]] || complain "$line"
    done
    expect_no_sanitizer_report
}
