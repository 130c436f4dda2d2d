#!/usr/bin/env bats
# The root daemon's command line, and how it starts where it cannot.

source "$BATS_TEST_DIRNAME/../support/processes.bash"

bats_require_minimum_version 1.5.0

setup()
{
    daemon=$VELQ_BUILD/daemon/VelqDemon
    export DBUS_SYSTEM_BUS_ADDRESS=unix:path=$BATS_TEST_TMPDIR/none
}

@test "--help says what there is" {
    run -0 "$daemon" --help
    [[ $output == usage:* && $output == *--idle* && $output == *--limit* ]]
}

@test "a command line that makes no sense is refused" {
    for words in --unknown word '--idle' '--idle x' '--limit 0' '--limit -1'; do
        # shellcheck disable=SC2086
        run -2 "$daemon" $words
        [[ $output == "VelqDemon: "*usage:* ]]
    done
}

@test "without a bus it says so and ends" {
    run -1 "$daemon"
    [[ $output == 'VelqDemon: sd_bus_start: No such file or directory' ]]
}

@test "without the standard descriptors it ends as well" {
    run -1 "$daemon" <&- >&- 2>&-
}

@test "without even a name it starts" {
    run -1 python3 -c 'import ctypes, sys
words, variables = (ctypes.c_char_p * 1)(None), (ctypes.c_char_p * 2)(sys.argv[2].encode(), None)
ctypes.CDLL(None).execve(sys.argv[1].encode(), words, variables)' \
        "$daemon" "DBUS_SYSTEM_BUS_ADDRESS=$DBUS_SYSTEM_BUS_ADDRESS"
    [[ $output == *sd_bus_start* ]]
}

@test "the unit takes away what the daemon does not need" {
    need systemd-analyze
    systemd-analyze security --offline=true --threshold=40 --no-pager \
        "$VELQ_SOURCE/resources/VelqDemon/com.zelmor.VelqDemon.service" >"$BATS_TEST_TMPDIR/out"
}
