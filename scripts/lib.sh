# shellcheck shell=bash
# What the scripts share; sourced, never run. Leaves its caller at the root of the source.

cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit

# Standard output belongs to the program that is run and to the results of a test run.
say()
{
    printf '%s\n' "$*" >&2
}

die()
{
    say "$(basename "$0"): $*"
    exit 1
}

# CMake watches its own files; the presets it was started from it does not.
configure()
{
    local folder=build/$1
    if [[ -e $folder/build.ninja && ! CMakePresets.json -nt $folder/build.ninja ]]; then
        return
    fi
    mkdir -p "$folder"
    if ! cmake --preset "$1" >"$folder/configure.log" 2>&1; then
        cat "$folder/configure.log" >&2
        return 1
    fi
}

# Silent when there is nothing to do; a moving line on a terminal, one sentence and errors elsewhere.
build()
{
    local quiet=()
    configure "$1" || return
    if [[ $(ninja -C "build/$1" -n 2>/dev/null) == *'no work to do'* ]]; then
        return
    fi
    if [[ ! -t 2 ]]; then
        say "Building Velq (a few minutes, the first time)"
        quiet=(-- --quiet)
    fi
    cmake --build --preset "$1" -j "$(nproc)" "${quiet[@]}" >&2
}

# The project's files: git's in a checkout, else everything but what was built. One a line.
project_files()
{
    local file
    { git ls-files -co --exclude-standard 2>/dev/null \
        || find . \( -path ./build -o -path ./.git -o -path ./.cache \) -prune -o -type f -printf '%P\n'; } \
        | while read -r file; do
            # git still lists what was deleted a moment ago
            [[ ! -f $file ]] || printf '%s\n' "$file"
        done
}
