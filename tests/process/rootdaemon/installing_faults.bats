#!/usr/bin/env bats
# The scripts that install and remove the root daemon, stopped at every step, without room at every step, and raced.

bats_require_minimum_version 1.5.0
source "$BATS_TEST_DIRNAME/../../support/tree.bash"

setup()
{
    make_tree
    need cmake
    make_small_staged "$here/home of nobody"
}

teardown()
{
    stop_everything
}

# count_steps TOOLS...: each use of these is a step, and at the step whose number is in $here/fatal whoever takes it is
# killed, with the script.
count_steps()
{
    local tool
    for tool; do
        wrap "$tool" "
            read -r count <'$here/count'
            read -r fatal <'$here/fatal'
            count=\$((count + 1))
            echo \$count >'$here/count'
            if [ \$count = \$fatal ]; then
                read -r group <'$here/group'
                kill -KILL -\$group
            fi"
    done
    # For as long as nobody is to be killed.
    echo 0 | tee "$here/count" >"$here/fatal"
}

# killed_at STEP FUNCTION: runs install_for or remove_for; false when it ended before that step.
killed_at()
{
    echo 0 >"$here/count"
    echo "$1" >"$here/fatal"
    local status=0
    # shellcheck disable=SC2016 # the script's own
    "$2" "$person" setsid --wait sh -c 'echo $$ >"$0"; exec "$@"' "$here/group" >/dev/null 2>&1 || status=$?
    echo 0 >"$here/fatal"
    [[ $status != 0 ]]
}

# The door is open only when everything is there.
absent_or_complete()
{
    if [[ -e $written/etc/dbus-1/system.d/com.zelmor.VelqDamonObject.$person.conf ]]; then
        common_is_complete
    fi
}

@test "killed at every step of an installation: absent or complete, and the next run heals" {
    local step=1
    count_steps mv install mkdir
    while killed_at "$step" install_for; do
        absent_or_complete
        if ((step % 2)); then
            install_for "$person" >/dev/null
            is_complete "$person"
        fi
        remove_for "$person" >/dev/null
        nothing_is_left
        step=$((step + 1))
    done
    echo "# killed at $((step - 1)) steps" >&3
    ((step > 25))
}

@test "killed at every step of a removal: the next run ends it" {
    local step=1
    count_steps rm rmdir
    install_for "$person" >/dev/null
    while killed_at "$step" remove_for; do
        absent_or_complete
        remove_for "$person" >/dev/null
        nothing_is_left
        install_for "$person" >/dev/null
        step=$((step + 1))
    done
    echo "# killed at $((step - 1)) steps" >&3
    ((step > 8))
}

@test "killed at every step of an upgrade: the next run heals" {
    local step=1
    count_steps mv install
    install_for "$person" >/dev/null
    # shellcheck disable=SC2016 # the tree's own
    while "${tree[@]}" sh -c 'for old in /usr/libexec/velq/*; do [ -d $old ] || echo old >$old; done' \
        && killed_at "$step" install_for; do
        install_for "$other" >/dev/null
        is_complete "$person"
        step=$((step + 1))
    done
    echo "# killed at $((step - 1)) steps" >&3
    ((step > 5))
}

# leave_room PAGES: in all of what the tree can be written to.
leave_room()
{
    local used
    used=$("${tree[@]}" df --output=used -k "$here/tree" | tail -n 1)
    "${tree[@]}" mount -o "remount,size=$((used + $1 * 4))k" "$here/tree"
}

@test "no room at any step: absent, and complete once there is room" {
    local pages failed=0
    install_for "$person" >/dev/null
    # Everything is there twice while it is on its way.
    pages=$(($("${tree[@]}" df --output=used -k "$here/tree" | tail -n 1) / 2 + 4))
    remove_for "$person" >/dev/null
    while ((pages > 0)); do
        leave_room "$pages"
        if ! install_for "$person" >/dev/null 2>&1; then
            failed=$((failed + 1))
            nothing_is_left
        else
            is_complete "$person"
            remove_for "$person" >/dev/null
        fi
        pages=$((pages - 1))
    done
    echo "# no room at $failed steps" >&3
    ((failed > 25))
    leave_room 10000
    install_for "$person" >/dev/null
    is_complete "$person"
}

@test "an upgrade without room leaves the old version whole" {
    install_for "$person" >/dev/null
    "${tree[@]}" sh -c 'echo old >>/usr/libexec/velq/VelqDemon'
    local before
    before=$(find "$written/etc" "$written/usr" -type f -exec sha256sum {} + | sort)
    leave_room 3
    run ! install_for "$other"
    diff <(echo "$before") <(find "$written/etc" "$written/usr" -type f -exec sha256sum {} + | sort)
}

@test "1,000 installations while the files are swapped and descriptors stolen: only what was approved" {
    local rounds=1000 refused wrong naive
    mkdir "$here/root"
    chown -R "$person" "$staged"
    echo 'only root may read this' >"$here/root/secret"
    printf 'what was approved%05000d' 0 >"$here/root/good"
    printf 'what was not%05005d' 0 >"$here/root/evil"
    chmod 600 "$here/root/secret"
    chmod 644 "$here/root/"{good,evil}
    chmod 755 "$here/root"
    start attacker "${tied[@]}" setpriv --reuid "$person" --regid "$person" --clear-groups \
        "$VELQ_SOURCE/tests/support/swapping-attacker" "$staged" "$here/root"
    expect_line attacker '^swapping$'
    read -r refused wrong naive < <(PKEXEC_UID=$person sh "$BATS_TEST_DIRNAME/race.sh" "$rounds" "$staged/file" "$here/root" \
        "$VELQ_SOURCE/resources/VelqDemon/person.sh")
    echo "# $rounds runs: $refused refused, $wrong wrong; looked at first and copied then: $naive wrong" >&3
    [[ $wrong == 0 ]]
    ((refused > 0 && refused < rounds))
    ((naive > 0))
}
