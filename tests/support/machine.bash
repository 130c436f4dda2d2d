# shellcheck shell=bash
# A booted machine of the test's own: this machine's programs and packages, but with a systemd of its own as its first
# process, and so with a system bus, polkit, logins, sessions and user managers that are the real ones. Whatever is
# written into its tree is gone with it. It has no network but a loopback.

# shellcheck source-path=SCRIPTDIR/../support
source "$(dirname "${BASH_SOURCE[0]}")/processes.bash"

# The words before a command that is to run in it, as root and outside any session.
machine=()
# Its tree, seen from outside.
machine_root=

need_machine()
{
    [[ $EUID == 0 ]] || skip 'only root can boot a machine'
    need systemd-nspawn systemd-run unshare nsenter setpriv mount dbus-daemon
    [[ -x /usr/lib/polkit-1/polkitd ]] || skip 'needs polkitd'
    with_control_groups sh -c 'mkdir velq-$$ && rmdir velq-$$' 2>/dev/null \
        || skip 'this system gives nobody a control group'
}

# In namespaces of its own: puts this process where its descendants' control groups are to be, lays an empty folder
# over this machine's tree, and boots that. The boot ends with basic.target: a machine whose services
# somebody has installed for other ends does not start them here.
# shellcheck disable=SC2016 # the script's own
boot_script='
set -e
umount -l /sys/fs/cgroup 2>/dev/null || true
mount -t cgroup2 cgroup2 /sys/fs/cgroup
mkdir -p "/sys/fs/cgroup/velq-$1/first"
echo 0 >"/sys/fs/cgroup/velq-$1/first/cgroup.procs"
shift
mount -t tmpfs -o mode=755 tmpfs "$1"
mkdir "$1/new" "$1/work" "$1/root"
mount -t overlay overlay -o "lowerdir=/,upperdir=$1/new,workdir=$1/work" "$1/root"
: >"$1/root/etc/machine-id"
shift
export SYSTEMD_NSPAWN_API_VFS_WRITABLE=network
exec systemd-nspawn --quiet --boot --register=no --keep-unit --private-network \
    --capability=all --resolv-conf=off --link-journal=no --console=pipe --directory "$@"'

# boot_machine [NSPAWN OPTIONS...]: the process is called machine; the checkout, the build and the tests' own folder are
# seen in it where they are outside.
boot_machine()
{
    # What counts its lines writes the counts into the build.
    local mounts=$here/machine build=${VELQ_COVERAGE:+--bind}
    mkdir "$mounts"
    forget_dead_machines
    start machine "${tied[@]}" unshare --mount --propagation private --pid --fork --kill-child --mount-proc \
        sh -c "$boot_script" sh "$$" "$mounts" "$mounts/root" \
        --machine=velq-test --bind-ro="$VELQ_SOURCE" "${build:---bind-ro}=$VELQ_BUILD" --bind="$BATS_RUN_TMPDIR" "$@" \
        -- --unit=basic.target systemd.show_status=0
    await_machine || complain "no machine came up; $(cat "$here/machine.err")"
    machine=(nsenter -t "$leader" --all)
    # shellcheck disable=SC2034 # for those who source this
    machine_root=/proc/$leader/root
    "${machine[@]}" systemctl --wait is-system-running >/dev/null || complain "$("${machine[@]}" systemctl --failed)"
    hand_on_leaks
}

# What a person's manager starts has nothing of our environment: the leaks of others that are let pass.
hand_on_leaks()
{
    [[ -n ${LSAN_OPTIONS:-} ]] || return 0
    "${machine[@]}" sh -c 'mkdir -p /etc/systemd/user.conf.d && cat >/etc/systemd/user.conf.d/leaks.conf' <<CONFIG
[Manager]
DefaultEnvironment="LSAN_OPTIONS=$LSAN_OPTIONS"
CONFIG
}

# Its first process is nspawn's only child, and nspawn unshare's; it answers once its manager listens.
await_machine()
{
    local deadline=$((EPOCHSECONDS + patience)) nspawn
    while ((EPOCHSECONDS < deadline)) && kill -0 "${pids[machine]}" 2>/dev/null; do
        nspawn=$(pgrep -P "${pids[machine]}") && leader=$(pgrep -P "$nspawn" | tail -n 1) || leader=
        if [[ -n $leader && -S /proc/$leader/root/run/systemd/private ]]; then
            return
        fi
        pause 0.05
    done
    return 1
}

stop_machine()
{
    if [[ -n ${pids[machine]:-} ]]; then
        [[ -n ${BATS_TEST_COMPLETED:-} ]] || tell_last_words
        kill -KILL "${pids[machine]}" 2>/dev/null || true
        wait_for machine 2>/dev/null
        forget_machine "$$"
    fi
}

# What a test that has failed leaves to tell why: its machine's journal is gone with it. The machine may hang.
tell_last_words()
{
    ((${#machine[@]} == 0)) || timeout -k 1 10 "${machine[@]}" journalctl --no-pager --lines=40 || true
}

# Control groups outlive their processes: those of machines whose test is no more.
forget_dead_machines()
{
    local group
    for group in $(with_control_groups ls); do
        if [[ $group == velq-* && ! -e /proc/${group#velq-} ]]; then
            forget_machine "${group#velq-}"
        fi
    done
}

# forget_machine TEST: its processes have been killed, but need not be gone. Several tests may clean up after a dead one.
forget_machine()
{
    # shellcheck disable=SC2016 # the script's own
    with_control_groups sh -c '
        for _ in $(seq 200); do
            grep -qs "populated 1" "$1/cgroup.events" || break
            sleep 0.02
        done
        find "$1" -depth -type d -exec rmdir {} \; 2>/dev/null
        [ ! -e "$1" ]' sh "velq-$1"
}

# The command runs in the folder of all control groups.
with_control_groups()
{
    # shellcheck disable=SC2016 # the script's own
    unshare --mount --propagation private sh -c 'mount -t cgroup2 cgroup2 /mnt && cd /mnt && exec "$@"' sh "$@"
}

# add_user NAME UID
add_user()
{
    "${machine[@]}" useradd --create-home --uid "$2" --shell /bin/bash "$1"
}

# The words before a command of a person's.
# systemd-run expands dollars, so each function doubles them.
session_run=(systemd-run --quiet --pipe --wait --collect -p PAMName=login -E XDG_SESSION_CLASS=user -E LANG=C.UTF-8
    -E PATH=/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin)

# The log-in is answered before the person is written down as active, which is what polkit goes by.
# shellcheck disable=SC2016 # the script's own
once_active='
for _ in $(seq 200); do
    grep -qs "^STATE=active" "/run/systemd/users/$(id -u)" && break
    sleep 0.02
done
exec "$@"'

# at_seat USER COMMAND...: in a session of that person at the machine's own screen, which is active.
at_seat()
{
    local user=$1
    shift
    set -- sh -c "$once_active" sh "$@"
    "${machine[@]}" "${session_run[@]}" --uid="$user" -p "WorkingDirectory=$(home_of "$user")" \
        -E XDG_SEAT=seat0 -E XDG_SESSION_TYPE=x11 -- "${@//\$/\$\$}"
}

# from_afar USER COMMAND...: in a session without a screen, as one over the network is.
from_afar()
{
    local user=$1
    shift
    "${machine[@]}" "${session_run[@]}" --uid="$user" -p "WorkingDirectory=$(home_of "$user")" \
        -- "${@//\$/\$\$}"
}

home_of()
{
    "${machine[@]}" getent passwd "$1" | cut -d : -f 6
}
