# shellcheck shell=bash
# The command velq, the real program, on a network of its own; the tools that it runs and the root daemon are the test's.

# shellcheck source-path=SCRIPTDIR/../support
source "$(dirname "${BASH_SOURCE[0]}")/tools.bash"

make_velq()
{
    need ip unshare nsenter setpriv dbus-daemon python3
    make_network
    make_surroundings
    program=$VELQ_BUILD/VelqMonitor.app/Contents/MacOS/velq
    with_fake_tools
}

# ask ARGUMENTS...: sets status, and the whole of output and errors; a program that does not end is killed.
ask()
{
    status=0
    "${inside[@]}" timeout --signal=KILL "$patience" "${surroundings[@]}" "$program" "$@" \
        >"$here/output" 2>"$here/errors" </dev/null || status=$?
    output=$(<"$here/output")
    errors=$(<"$here/errors")
}

# says STATUS OUTPUT [ERRORS]: that is what came of the last ask.
says()
{
    [[ $status == "$1" ]] || complain "it ended with $status: $output $errors"
    [[ $output == "$2" ]] || complain "it said: $output"
    [[ $errors == "${3:-}" ]] || complain "it complained: $errors"
}

# says_json STATUS VALUE: the value, in Python, is what came of the last ask.
says_json()
{
    [[ $status == "$1" && $errors == '' ]] || complain "it ended with $status: $errors"
    python3 -m json.tool <"$here/output" >/dev/null
    python3 -c 'import ast, json, sys
found, wanted = json.load(open(sys.argv[1])), ast.literal_eval(sys.argv[2])
sys.exit(found != wanted and f"{found} is not {wanted}")' "$here/output" "$2"
}

expect_no_tool()
{
    expect_silence tools 0.1
}
