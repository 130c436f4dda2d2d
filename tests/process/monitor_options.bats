#!/usr/bin/env bats
# The monitor's command line.

source "$BATS_TEST_DIRNAME/../support/monitor.bash"

usage='usage: velq-monitor [--console] [--help] [--version]'

setup()
{
    need setpriv
    make_surroundings
}

teardown()
{
    stop_everything
}

# ask ARGUMENTS...: sets status, and the whole of output and errors; a program that does not end is killed.
ask()
{
    status=0
    timeout --signal=KILL "$patience" "${surroundings[@]}" "$program" "$@" >"$here/output" 2>"$here/errors" || status=$?
    output=$(<"$here/output")
    errors=$(<"$here/errors")
}

expect_refusal_of()
{
    [[ $status == 2 ]]
    [[ $output == '' ]]
    [[ $errors == "velq-monitor: unknown argument '$1'"$'\n'"$usage" ]]
}

@test "an unknown option is refused with the usage" {
    ask --no-such-option
    expect_refusal_of --no-such-option
}

@test "an argument that is no option is refused, also after an option" {
    ask file
    expect_refusal_of file
    ask --console file
    expect_refusal_of file
    ask ''
    expect_refusal_of ''
}

@test "--help and -h show how it is called" {
    ask --help
    [[ $status == 0 && $errors == '' ]]
    [[ $output == "$usage"$'\n'* ]]
    local help=$output
    ask -h
    [[ $status == 0 && $errors == '' && $output == "$help" ]]
}

@test "--version shows the version" {
    ask --version
    [[ $status == 0 && $errors == '' ]]
    [[ $output =~ ^velq-monitor\ [0-9]+\.[0-9]+\.[0-9]+$ ]]
}
