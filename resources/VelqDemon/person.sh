# shellcheck shell=sh
# For whom root is working, and how it reads what that person can write. Part of the other scripts.

fail()
{
    printf '%s\n' "$*" >&2
    exit 1
}

# Sets uid, gid and name from what pkexec vouches for, and from nothing else.
find_person()
{
    case ${PKEXEC_UID:-} in
    '' | *[!0-9]*) fail "pkexec did not say who asks" ;;
    esac
    entry=$(getent passwd "$PKEXEC_UID") || fail "nobody is known with the user id $PKEXEC_UID"
    IFS=: read -r name _ uid gid _ <<ENTRY
$entry
ENTRY
    [ "$uid" = "$PKEXEC_UID" ] || fail "$name is not the user $PKEXEC_UID"
}

# read_as_user FILE SIZE: its first SIZE bytes, on standard output, as far as the person may read them. Ends in
# time, whatever the path leads to. The person can make a process of theirs give away what it has open: that is
# one end of a pipe, never the copy itself or the lock.
read_as_user()
{
    timeout -k 1 3 setpriv --reuid "$uid" --regid "$gid" --clear-groups --no-new-privs \
        head -c "$2" -- "$1" </dev/null 2>/dev/null 9>&- | timeout -k 1 4 head -c "$2"
}

# fetch FILE SIZE DIGEST COPY: what is looked at afterwards is the copy, which only root can change.
fetch()
{
    read_as_user "$1" "$2" >"$4" || fail "$1 could not be copied"
    echo "$3  $4" | sha256sum --check --status || fail "$1 is not what this installation was made of"
}
