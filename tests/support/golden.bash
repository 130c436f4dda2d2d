# shellcheck shell=bash
# What a tool must say to the letter, in files. VELQ_UPDATE_GOLDEN writes them anew, to be read before they are kept.

# is_golden NAME: the files output and errors in the test's folder, and status, are what golden/NAME.txt beside the test
# says.
# shellcheck disable=SC2154 # the test's own
is_golden()
{
    local golden=$BATS_TEST_DIRNAME/golden/$1.txt
    {
        cat "$here/output"
        echo '--- errors'
        cat "$here/errors"
        echo "--- status $status"
    } >"$here/actual"
    if [[ -n ${VELQ_UPDATE_GOLDEN:-} ]]; then
        cp "$here/actual" "$golden"
    fi
    diff -u "$golden" "$here/actual"
}
