#!/usr/bin/env bats
# velq helper, beside the root daemon as it is installed: what it says of it, and how it takes it away. The test is the
# person in front of the screen.

# shellcheck source-path=SCRIPTDIR/../support
source "$BATS_TEST_DIRNAME/../support/machine.bash"

app=/opt/VelqMonitor.app
velq=$app/Contents/MacOS/velq
whole=$'installed      yes\ncomplete       yes\nversion        1\nthere for you  yes\nanswers        yes'

setup()
{
    need_machine
    # shellcheck disable=SC2119 # it needs no options
    boot_machine
    add_user person 4001
    add_user other 4002
    "${machine[@]}" usermod --append --groups sudo person
    echo person:secret | "${machine[@]}" chpasswd
    # The checkout may be out of the person's reach.
    "${machine[@]}" cp -rL "$VELQ_BUILD/VelqMonitor.app" "$app"
}

teardown()
{
    stop_machine
    stop_everything
}

# install_for UID: as pkexec would run the script for that person.
install_for()
{
    local resources=$app/Contents/Resources digest
    digest=$("${machine[@]}" sha256sum "$resources/copy.sh")
    "${machine[@]}" env PKEXEC_UID="$1" sh -c "$(<"$VELQ_BUILD/resources/VelqDemon/bootstrap.sh")" velq-install \
        "${digest%% *}" "$resources/copy.sh" "$resources/VelqDemon" "$resources/com.zelmor.VelqDemon.plist" >/dev/null
}

# says STATUS TEXT USER ARGUMENTS...
says()
{
    local status=0 said
    said=$(at_seat "$3" "$velq" helper "${@:4}" 2>&1) || status=$?
    [[ $status == "$1" && $said == "$2" ]] || complain "it ended with $status: $said"
}

# remove_with ANSWER: as the person who gives this answer to the prompt. Sets status and output.
remove_with()
{
    # shellcheck disable=SC2034 # for the test
    run at_seat person "$VELQ_SOURCE/tests/support/polkit-agent" "$1" "$velq" helper remove
}

@test "there, whole, and at work" {
    install_for 4001
    says 0 "$whole" person status
    [[ $(at_seat person "$velq" helper status --json | tr -d '\n ') == \
        '{"answers":true,"complete":true,"faulty":[],"granted":true,"installed":true,"version":1}' ]]
}

@test "there for somebody else" {
    install_for 4001
    says 1 $'installed      yes\ncomplete       yes\nversion        1\nthere for you  no\nanswers        no' other status
    run at_seat other "$velq" repair
    [[ $status == 1 && ${lines[*]} == *'velq: nothing could be changed as root: the helper that does it does not serve you. Try it at'* ]] \
        || complain "it ended with $status: $output"
}

@test "not there" {
    says 1 $'installed      no\ncomplete       no\nversion        -\nthere for you  no\nanswers        no' person status
    says 0 'There is no helper to remove.' person remove
}

@test "files that are missing or not as they were" {
    install_for 4001
    "${machine[@]}" sh -c 'cd /usr/libexec/velq/nettools; rm ping; echo >>arp; chmod 777 route; chown person sudo'
    says 1 "${whole/complete       yes/complete       no}
missing or changed: /usr/libexec/velq/nettools/arp
missing or changed: /usr/libexec/velq/nettools/ping
missing or changed: /usr/libexec/velq/nettools/route
missing or changed: /usr/libexec/velq/nettools/sudo" person status
}

@test "removed, when an administrator allows it" {
    install_for 4001
    remove_with --dismiss
    [[ $status == 1 && $output == *'stays: the question for the administrator'*' was dismissed.'* ]] || complain "$output"
    says 0 "$whole" person status
    remove_with secret
    [[ $status == 0 && $output == *'The helper is removed.'* ]] || complain "$output"
    "${machine[@]}" test ! -e /usr/libexec/velq
}

@test "removed for one of two" {
    install_for 4001
    install_for 4002
    remove_with secret
    [[ $status == 0 && $output == *'The helper is not there for you any more; it stays for others.'* ]]
    says 0 "$whole" other status
}

@test "nobody can be asked" {
    install_for 4001
    says 1 $'Removing the helper\nThe helper could not be removed: Error executing command as another user: No authentication agent found.' \
        person remove
    says 0 "$whole" person status
}
