# shellcheck shell=bash
# The command velq in the hands of the person in the home network.

# shellcheck source-path=SCRIPTDIR/../support
source "$(dirname "${BASH_SOURCE[0]}")/homenetwork.bash"

# velq ARGUMENTS...: by the person; sets status, output and errors.
# shellcheck disable=SC2034,SC2154 # for those who source this, and theirs
velq()
{
    status=0
    at_seat person "$app/Contents/MacOS/velq" "$@" >"$here/output" 2>"$here/errors" || status=$?
    output=$(<"$here/output")
    errors=$(<"$here/errors")
}
