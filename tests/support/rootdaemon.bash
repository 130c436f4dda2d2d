# shellcheck shell=bash
# A person's program that uses the root daemon.

# shellcheck source-path=SCRIPTDIR/../support
source "$(dirname "${BASH_SOURCE[0]}")/bus.bash"

# make_bundle FOLDER [WORDS before the commands...]: an application with everything that installs the daemon, and
# a program that does as it is told. Copies: links into the build would show where they lead.
make_bundle()
{
    local contents=$1/Contents
    shift
    "$@" mkdir -p "$contents/MacOS"
    "$@" cp -rL "$VELQ_BUILD/VelqMonitor.app/Contents/Resources" "$VELQ_BUILD/VelqMonitor.app/Contents/Helpers" \
        "$contents/"
    "$@" cp "$VELQ_BUILD/tests/process/rootdaemon/privileged_shell" "$contents/MacOS/"
}

# tell NAME LINE REGEX: the program's answer to a line; it reads them from $here/NAME.in.
tell()
{
    echo "$2" >"$here/$1.in"
    expect_line "$1" "$3"
}

# start_told NAME COMMAND...: one that reads what it is told.
start_told()
{
    local input=$here/$1.in
    mkfifo "$input"
    # Held open for both: it does not end when a line has been told.
    # shellcheck disable=SC2034 # closed with the test
    exec {told}<>"$input"
    start "$@"
}
