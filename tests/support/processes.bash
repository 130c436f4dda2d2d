# shellcheck shell=bash
# Processes that a test starts, reads line by line, and ends by their ids. Everything they write lies in
# $here, which bats removes.

here=${BATS_TEST_TMPDIR:-${BATS_FILE_TMPDIR:-}}
# A deadline, not a pause: nothing waits longer than it must. Sanitized programs on a busy machine are slow.
patience=${VELQ_PATIENCE:-40}
# Global by word: bats reads its files inside a function.
declare -gA pids=() outputs=()

need()
{
    local tool
    for tool; do
        command -v "$tool" >/dev/null || skip "needs $tool"
    done
}

complain()
{
    printf '%s\n' "$*" >&2
    return 1
}

# open_stream NAME: for lines that next_line reads; whoever is to write them writes to $here/NAME.out.
open_stream()
{
    local descriptor
    mkfifo "$here/$1.out"
    # Open for both: neither side waits for the other.
    exec {descriptor}<>"$here/$1.out"
    outputs[$1]=$descriptor
}

# start NAME COMMAND...: in the background, its output readable with next_line, its errors in NAME.err.
start()
{
    local name=$1
    shift
    open_stream "$name"
    # Bats waits until nobody holds its descriptor 3.
    "$@" >"$here/$name.out" 2>"$here/$name.err" <"${input:-/dev/null}" 3>&- &
    pids[$name]=$!
    [[ $(type -t "$1") != file ]] || await_program "${pids[$name]}"
}

# await_program PID: this shell's child has become another program. A signal that comes before may be lost: bash's own
# handler takes it, and what takes the shell's place never hears of it. A function of the test's stays a shell.
await_program()
{
    local own theirs
    mapfile -d '' own <"/proc/$$/cmdline"
    theirs=("${own[@]}")
    while [[ ${theirs[*]} == "${own[*]}" ]]; do
        mapfile -d '' theirs 2>/dev/null <"/proc/$1/cmdline" || theirs=()
    done
}

# The words before a command of start, after those that change its namespaces: it ends when the test's shell
# does, be that killed, and does not ignore SIGINT as background jobs do.
# shellcheck disable=SC2034 # for those who source this
tied=(setpriv --pdeathsig KILL env '--default-signal=INT,QUIT')

# next_line NAME [SECONDS]: sets line; false when none comes in time.
next_line()
{
    IFS= read -r -t "${2:-$patience}" -u "${outputs[$1]}" line || return
    printf '%s\n' "$line" >>"$here/$1.lines"
}

# expect_line NAME REGEX: the very next line matches; sets line.
expect_line()
{
    next_line "$1" || complain "no line from $1, but '$2' was expected; $(report "$1")"
    [[ $line =~ $2 ]] || complain "'$line' from $1 is not '$2'"
}

# await_line NAME REGEX: some later line matches; sets line.
await_line()
{
    local deadline=$((EPOCHSECONDS + patience))
    while ((EPOCHSECONDS < deadline)); do
        if next_line "$1" $((deadline - EPOCHSECONDS)) && [[ $line =~ $2 ]]; then
            return
        fi
    done
    complain "no line '$2' from $1; $(report "$1")"
}

# expect_silence NAME SECONDS: the only pause there is; to see that nothing happens takes time.
expect_silence()
{
    ! next_line "$1" "$2" || complain "'$line' from $1, but silence was expected"
}

report()
{
    echo "it has said:"
    cat "$here/$1.lines" "$here/$1.err" 2>/dev/null
}

# pause SECONDS: between two looks at what tells nobody of its changes.
pause()
{
    read -r -t "$1" <> <(:) || true
}

# until_true COMMAND...: for what tells nobody of its changes.
until_true()
{
    local deadline=$((EPOCHSECONDS + patience))
    until "$@"; do
        ((EPOCHSECONDS < deadline)) || complain "never came true: $*" || return
        pause 0.05
    done
}

# processor_time PID: what it has used so far, in milliseconds.
processor_time()
{
    local stat fields
    stat=$(<"/proc/$1/stat")
    read -ra fields <<<"${stat##*) }"
    echo $(((fields[11] + fields[12]) * 1000 / $(getconf CLK_TCK)))
}

# expect_idle NAME [PID]: for two seconds it says nothing and uses next to no processor time. PID is for one that
# is not the test's own child.
expect_idle()
{
    local pid=${2:-${pids[$1]}} before
    before=$(processor_time "$pid")
    expect_silence "$1" 2
    (($(processor_time "$pid") - before < 200)) || complain "$1 is busy with nothing"
}

# wait_for NAME: sets status to its exit status; a process that does not end is killed, which is status 137.
# shellcheck disable=SC2034 # for those who source this
wait_for()
{
    local pid=${pids[$1]} guard
    # A pipe that nobody writes to: a pause without a process to clean up.
    # shellcheck disable=SC2016 # the guard's own
    "${tied[@]}" bash -c 'read -r -t "$1" <> <(:); kill -KILL "$2"' guard "$patience" "$pid" 3>&- &
    guard=$!
    status=0
    wait "$pid" || status=$?
    kill -KILL "$guard" 2>/dev/null || true
    wait "$guard" 2>/dev/null || true
    unset "pids[$1]"
}

# stop NAME: for what is not under test.
stop()
{
    kill "${pids[$1]}"
    wait_for "$1"
}

stop_everything()
{
    local name
    for name in "${!pids[@]}"; do
        kill -KILL "${pids[$name]}" 2>/dev/null || true
        wait "${pids[$name]}" 2>/dev/null || true
    done
    pids=()
}

# once_within MILLISECONDS COMMAND...: it succeeds each time, and takes no longer in one of five tries at least: a busy
# machine may stop it now and then.
once_within()
{
    local try begin
    for ((try = 0; try < 5; ++try)); do
        begin=$EPOCHREALTIME
        "${@:2}"
        (($(milliseconds_since "$begin") >= $1)) || return 0
    done
    complain "it always takes longer than $1 ms: ${*:2}"
}

# milliseconds_since TIME, as taken from $EPOCHREALTIME
milliseconds_since()
{
    local now=$EPOCHREALTIME
    echo $(((${now/[.,]/} - ${1/[.,]/}) / 1000))
}
