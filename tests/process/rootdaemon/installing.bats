#!/usr/bin/env bats
# The scripts that install and remove the root daemon, as root runs them, against people who change the files
# meanwhile and machines that fail.

bats_require_minimum_version 1.5.0
source "$BATS_TEST_DIRNAME/../../support/tree.bash"

setup()
{
    make_tree
    make_staged "$here/home of nobody"
}

teardown()
{
    stop_everything
}

# expect_refusal [MILLISECONDS]: nothing is installed, and that in five seconds, or in so many more.
expect_refusal()
{
    once_within $((5000 + ${1:-0})) refuses
}

refuses()
{
    ! install_for "$person" 2>"$here/reason" || complain 'it was installed'
    [[ -s $here/reason ]]
    nothing_is_left
}

@test "installed, and removed without a trace" {
    run -0 install_for "$person"
    [[ $output == started ]]
    is_complete "$person"
    run -0 remove_for "$person"
    nothing_is_left
}

@test "installed again: nothing changes" {
    install_for "$person"
    local before
    before=$(find "$written/etc" "$written/usr" -printf '%p %i %T@\n' | sort)
    install_for "$person"
    is_complete "$person"
    diff <(echo "$before") <(find "$written/etc" "$written/usr" -printf '%p %i %T@\n' | sort)
}

@test "what did not come out right is taken away again" {
    wrap sync '[ ! -e /usr/libexec/velq/VelqDemon ] || echo more >>/usr/libexec/velq/VelqDemon'
    run -1 install_for "$person"
    [[ $output == *'/usr/libexec/velq/VelqDemon did not come out right' ]] || complain "$output"
    nothing_is_left
}

@test "what cannot be removed is told" {
    install_for "$person"
    "${tree[@]}" touch /usr/libexec/velq/strange
    run -1 remove_for "$person"
    [[ $output == *'/usr/libexec/velq could not be removed' ]] || complain "$output"
    [[ $(residue) == $'libexec/velq\nlibexec/velq/strange' ]] || complain "$(residue)"
    "${tree[@]}" rm /usr/libexec/velq/strange
    remove_for "$person"
    nothing_is_left
}

@test "removed twice, and where nothing is installed" {
    remove_for "$person"
    nothing_is_left
    install_for "$person"
    remove_for "$person"
    remove_for "$person"
    nothing_is_left
}

@test "removed with files missing" {
    local place
    for place in /usr/libexec/velq/manifest /usr/libexec/velq/VelqDemon /etc/velq \
        "/etc/dbus-1/system.d/com.zelmor.VelqDamonObject.$person.conf" /etc/dbus-1/system.d/com.zelmor.VelqDamonObject.conf; do
        install_for "$person"
        "${tree[@]}" rm -r "$place"
        remove_for "$person"
        nothing_is_left
    done
}

@test "a second person: the first keeps everything, the last takes everything along" {
    install_for "$person"
    install_for "$other"
    is_complete "$person"
    is_complete "$other"
    remove_for "$person"
    is_complete "$other"
    [[ ! -e $written/etc/velq/authorized.d/$person ]]
    [[ ! -e $written/etc/dbus-1/system.d/com.zelmor.VelqDamonObject.$person.conf ]]
    remove_for "$person"
    is_complete "$other"
    remove_for "$other"
    nothing_is_left
}

@test "a second person whose installation fails gets no access, and the first keeps theirs" {
    local failing=$here/failing/Contents digest
    install_for "$person"
    cp -r "${resources%/Contents/*}" "$here/failing"
    # At the last step, with everything in its place.
    sed -i 's/^verify_all()$/verify_all() { fail "not to be"; }; was_verify_all()/' "$failing/Resources/copy.sh"
    chmod -R a+rX "$here/failing"
    digest=$(sha256sum <"$failing/Resources/copy.sh")
    run -1 "${tree[@]}" env "PKEXEC_UID=$other" sh -c "$(<"$scripts/bootstrap.sh")" velq-install "${digest%% *}" \
        "$failing/Resources/copy.sh" "$staged/VelqDemon" "$staged/com.zelmor.VelqDemon.plist"
    [[ $output == *'not to be' ]]
    [[ ! -e $written/etc/velq/authorized.d/$other ]]
    [[ ! -e $written/etc/dbus-1/system.d/com.zelmor.VelqDamonObject.$other.conf ]]
    is_complete "$person"
}

@test "a person whose name has a backslash in it" {
    "${tree[@]}" sh -c 'printf "%s\n" "CORP\\nina:x:4711:4711::/:/bin/sh" >>/etc/passwd'
    install_for 4711
    [[ $(<"$written/etc/velq/authorized.d/4711") == '4711 CORP\nina' ]]
}

@test "root as a person of their own" {
    install_for 0
    is_complete 0
    install_for "$person"
    remove_for 0
    is_complete "$person"
    install_for 0
    remove_for "$person"
    is_complete 0
    remove_for 0
    nothing_is_left
}

@test "an older version is replaced, and the tools that it had more are gone" {
    install_for "$person"
    "${tree[@]}" sh -c 'cd /usr/libexec/velq; echo old >VelqDemon; echo old >nettools/formertool; chmod 4777 nettools/arp'
    install_for "$other"
    is_complete "$person"
    [[ ! -e $written/usr/libexec/velq/nettools/formertool ]]
}

@test "it is nobody's, or nobody knows whose" {
    local uid
    for uid in '' 12345678 -1 +1 0x1 01 '1 1' '../1' '*'; do
        ! install_for "$uid" || complain "installed for '$uid'"
        ! remove_for "$uid" || complain "removed for '$uid'"
    done
    nothing_is_left
}

@test "words that are no files of an installation" {
    prepare copy.sh "$staged/Velq" Demon "$staged/com.zelmor.Velq" Demon.plist
    run -1 "${tree[@]}" env -i PKEXEC_UID="$person" "${command[@]}"
    [[ $output == *'is not what this installation was made of' ]] || complain "$output"
    nothing_is_left
}

@test "files that lead elsewhere are refused, and nothing of them is copied" {
    local plist=$staged/com.zelmor.VelqDemon.plist
    mv "$staged/VelqDemon" "$here/kept"
    chmod 644 "$here/kept"
    # A link to a file that only root can read.
    ln -s /etc/shadow "$staged/VelqDemon"
    expect_refusal
    # The file itself, under another name.
    rm "$staged/VelqDemon"
    echo secret >"$here/secret"
    chmod 600 "$here/secret"
    ln "$here/secret" "$staged/VelqDemon"
    expect_refusal
    rm "$staged/VelqDemon"
    mkdir "$staged/VelqDemon"
    expect_refusal
    rmdir "$staged/VelqDemon"
    expect_refusal
    mknod "$staged/VelqDemon" c 1 5
    chmod 666 "$staged/VelqDemon"
    expect_refusal
    rm "$staged/VelqDemon"
    truncate -s 1T "$staged/VelqDemon" || truncate -s 1G "$staged/VelqDemon"
    chmod 644 "$staged/VelqDemon"
    expect_refusal
    rm "$staged/VelqDemon"
    ln -s VelqDemon "$staged/VelqDemon"
    expect_refusal
    rm "$staged/VelqDemon"
    # A folder on the way is a link to where only root can look.
    mkdir -m 700 "$here/closed"
    cp "$here/kept" "$here/closed/VelqDemon"
    cp "$plist" "$here/closed/"
    mv "$staged" "$staged.real"
    ln -s "$here/closed" "$staged"
    expect_refusal
}

@test "what only a group of root's may read is no file of the person's" {
    chown 0:4242 "$staged/VelqDemon"
    chmod 640 "$staged/VelqDemon"
    run ! install_for "$person" setpriv --groups 0,4242
    [[ $output == *'is not what this installation was made of' || $output == *'could not be copied' ]] || complain "$output"
    nothing_is_left
    # It is the same in all else.
    chown "$person" "$staged/VelqDemon"
    install_for "$person" setpriv --groups 0,4242 >/dev/null
    is_complete "$person"
}

# The milliseconds of a refusal that waits for no file: the machine's share.
refusal_at_once()
{
    local begin=$EPOCHREALTIME
    ! staged=$here/nowhere install_for "$person" >/dev/null 2>&1 || complain 'it was installed'
    milliseconds_since "$begin"
}

@test "a file that never ends to be opened, and a script that does not" {
    local share
    share=$(refusal_at_once)
    rm "$staged/VelqDemon"
    mkfifo -m 666 "$staged/VelqDemon"
    expect_refusal "$share"
    rm "$resources/copy.sh"
    mkfifo -m 666 "$resources/copy.sh"
    expect_refusal "$share"
}

@test "a folder whose file system never answers" {
    local share
    share=$(refusal_at_once)
    # It is mounted, and nobody serves it.
    # shellcheck disable=SC2016 # the script's own
    start silent "${tree[@]}" sh -c 'exec 7<>/dev/fuse || exit
        mount -i -t fuse -o fd=7,rootmode=40000,user_id=0,group_id=0,allow_other silent "$1" && echo silent
        exec sleep infinity' sh "$staged"
    expect_line silent '^silent$'
    expect_refusal "$share"
}

@test "a resource that was changed since the build is refused" {
    local file
    for file in "$resources"/*.{sh,conf,service,policy} "$resources/../Helpers"/* "$staged"/*; do
        [[ $file == */remove.sh ]] && continue
        cp -p "$file" "$here/kept"
        printf x | dd of="$file" bs=1 seek=10 conv=notrunc status=none
        expect_refusal
        cp -p "$here/kept" "$file"
    done
    install_for "$person"
    is_complete "$person"
    echo 'touch /run/touched' >>"$resources/remove.sh"
    run ! remove_for "$person"
    is_complete "$person"
}

@test "the script is changed while it is at work: the copy is what runs" {
    wrap mv "echo 'touch /run/touched' >>'$resources/copy.sh'"
    install_for "$person"
    is_complete "$person"
    [[ ! -e $written/run/touched ]]
    grep -q touched "$resources/copy.sh"
}

@test "folders and places that are not root's alone are refused" {
    local folder place
    for folder in /etc/dbus-1/system.d /usr/libexec /etc/systemd; do
        "${tree[@]}" chmod o+w "$folder"
        expect_refusal_with_folders
        "${tree[@]}" chmod o-w,g+w "$folder"
        expect_refusal_with_folders
        "${tree[@]}" chmod g-w "$folder"
        "${tree[@]}" chown nobody "$folder"
        expect_refusal_with_folders
        "${tree[@]}" chown root "$folder"
    done
    "${tree[@]}" ln -s "$here" /etc/velq
    expect_refusal_with_folders
    "${tree[@]}" rm /etc/velq
    for place in /etc/systemd/system/com.zelmor.VelqDemon.service /usr/share/polkit-1/actions/com.zelmor.velqdemon.policy; do
        "${tree[@]}" ln -s "$here/target" "$place"
        run ! install_for "$person"
        [[ ! -e $here/target ]]
        "${tree[@]}" rm -f "$place"
    done
    install_for "$person"
    is_complete "$person"
}

# The folder that was changed stays one.
expect_refusal_with_folders()
{
    ! install_for "$person" 2>"$here/reason" || complain 'it was installed'
    [[ -z $(find "$written/etc" "$written/usr" -name '*elq*' -type f) ]]
}

@test "installations at one time wait for each other" {
    local number
    for number in 1 2 3 4; do
        prepare copy.sh "$staged/VelqDemon" "$staged/com.zelmor.VelqDemon.plist"
        start "installer$number" "${tree[@]}" env -i PKEXEC_UID="$person" "${command[@]}"
    done
    for number in 1 2 3 4; do
        wait_for "installer$number"
        [[ $status == 0 ]] || complain "$(cat "$here/installer$number.err")"
    done
    is_complete "$person"
}
