# shellcheck shell=bash
# A tree of the test's own over this machine's: what root writes below /etc, /usr and /run is seen here only, and is
# gone with the test. Without buses and services, so that an installation in it takes a fraction of a second.

# shellcheck source-path=SCRIPTDIR/../support
source "$(dirname "${BASH_SOURCE[0]}")/rootdaemon.bash"

# Who installs: the user nobody, who has no other files here.
person=65534
# shellcheck disable=SC2034 # for those who source this
other=1

# Words before a command in the tree; and the folders that remember what was written there.
tree=()
written=

# shellcheck disable=SC2016 # the script's own
tree_script='
set -e
mount -t tmpfs -o mode=755 tmpfs "$1"
for folder in etc usr; do
    mkdir "$1/$folder" "$1/$folder.work"
    mount -t overlay overlay -o "lowerdir=/$folder,upperdir=$1/$folder,workdir=$1/$folder.work" "/$folder"
done
mkdir "$1/run"
mount --bind "$1/run" /run
echo ready
exec sleep infinity'

make_tree()
{
    [[ $EUID == 0 ]] || skip 'only root can have a tree of its own'
    need unshare nsenter setpriv flock
    written=$here/tree
    mkdir "$written"
    # The person comes along here, too.
    chmod 711 "$BATS_RUN_TMPDIR" "$BATS_RUN_TMPDIR/test" "$here"
    start tree unshare --mount --propagation private "${tied[@]}" sh -c "$tree_script" sh "$written"
    expect_line tree '^ready$'
    tree=(nsenter -t "${pids[tree]}" --mount)
    written=/proc/${pids[tree]}/root/$written
}

# make_staged FOLDER: a bundle there, and the two files beside it as a program stages them, all of it the person's.
make_staged()
{
    make_bundle "$1/Velq.app"
    resources=$1/Velq.app/Contents/Resources
    staged=$1/staged
    scripts=$VELQ_BUILD/resources/VelqDemon
    mkdir "$staged"
    cp "$resources/VelqDemon" "$resources/com.zelmor.VelqDemon.plist" "$staged/"
    chown -R "$person:$person" "$1"
}

# make_small_staged FOLDER: the same of an application whose programs are a few bytes each, which the scripts cannot
# tell; for tests that install it very often.
make_small_staged()
{
    local contents=$1/Velq.app/Contents texts=$VELQ_SOURCE/resources/VelqDemon name
    resources=$contents/Resources
    staged=$1/staged
    scripts=$here/scripts
    mkdir -p "$resources" "$contents/Helpers" "$staged"
    echo daemon >"$resources/VelqDemon"
    for name in one two; do
        echo "$name" >"$contents/Helpers/$name"
    done
    cmake -D SOURCE="$texts" -D BUILD="$scripts" -D DAEMON="$resources/VelqDemon" \
        -D TOOLS="$contents/Helpers/one;$contents/Helpers/two" -P "$VELQ_SOURCE/cmake/VelqDemonScripts.cmake"
    cp "$texts"/com.* "$scripts"/{copy,remove}.sh "$resources/"
    cp "$resources/VelqDemon" "$resources/com.zelmor.VelqDemon.plist" "$staged/"
    chown -R "$person:$person" "$1"
}

# The shell's words for a script of the bundle, as pkexec starts them: sets command.
prepare()
{
    local script=$1 digest
    shift
    digest=$(sha256sum <"$scripts/$script")
    command=(/bin/sh -c "$(<"$scripts/bootstrap.sh")" velq-install "${digest%% *}"
        "$resources/$script" "$@")
}

# install_for UID [WORDS before the shell...]
install_for()
{
    local uid=$1
    shift
    prepare copy.sh "$staged/VelqDemon" "$staged/com.zelmor.VelqDemon.plist"
    "${tree[@]}" env -i PKEXEC_UID="$uid" "$@" "${command[@]}"
}

# remove_for UID [WORDS before the shell...]
remove_for()
{
    local uid=$1
    shift
    prepare remove.sh
    "${tree[@]}" env -i PKEXEC_UID="$uid" "$@" "${command[@]}"
}

# wrap TOOL COMMANDS: before the tool does its work, in the tree only.
wrap()
{
    printf '#!/bin/sh\n%s\nexec /usr/bin/%s "$@"\n' "$2" "$1" >"$here/wrapper"
    "${tree[@]}" install -m 755 "$here/wrapper" "/usr/sbin/$1"
}

# All files that the tree has more than the machine, and all folders of ours; but for tools that a test has put there.
residue()
{
    find "$written/etc" "$written/usr" "$written/run" -path "$written/usr/sbin" -prune -o \( -not -type d -o -name '*velq*' \) -printf '%P\n'
}

nothing_is_left()
{
    [[ -z $(residue) ]] || complain "left: $(residue)"
}

# What an installation has whoever it is for, with the right content.
common_is_complete()
{
    local place mode digest
    while read -r place mode digest; do
        [[ $("${tree[@]}" stat -c '%u:%g:0%a %F' "$place") == "0:0:$mode regular file" ]] || complain "$place is no such file"
        [[ $("${tree[@]}" sha256sum <"$written/${place#/}") == "$digest  -" ]] || complain "$place is another"
    done <"$written/usr/libexec/velq/manifest"
}

# is_complete UID: everything that belongs to an installation for that person.
is_complete()
{
    common_is_complete
    cmp "$written/usr/libexec/velq/VelqDemon" "$resources/VelqDemon"
    [[ $(<"$written/etc/velq/authorized.d/$1") == "$1 $(getent passwd "$1" | cut -d : -f 1)" ]]
    [[ $(<"$written/etc/velq/authorized.d/0") == '0 root' ]]
    grep -q "<policy user=\"$1\">" "$written/etc/dbus-1/system.d/com.zelmor.VelqDamonObject.$1.conf"
    [[ -z $(find "$written/etc" "$written/usr" -name '*.velq-new') ]]
    [[ ! -e $written/run/velq-install ]]
}
