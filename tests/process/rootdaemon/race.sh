#!/bin/sh
# race.sh ROUNDS FILE FOLDER PERSON.SH
# How often root takes something else than FOLDER/good from a FILE that somebody swaps: the way the installation
# reads it, and by looking at the file first and copying it then. Prints refused, wrong, and wrong the second way.
set -eu
umask 077
rounds=$1 file=$2 folder=$3
# shellcheck source=/dev/null
. "$4"
find_person
size=$(stat -c %s "$folder/good")
digest=$(sha256sum <"$folder/good" | cut -d ' ' -f 1)

by_the_copy()
{
    (fetch "$file" "$size" "$digest" "$folder/copy") 2>/dev/null
}

by_the_path()
{
    [ "$(sha256sum <"$file" 2>/dev/null)" = "$digest  -" ] && install -m 644 "$file" "$folder/copy" 2>/dev/null
}

# run WAY: sets refused and wrong
run()
{
    refused=0 wrong=0 round=0
    while [ "$round" -lt "$rounds" ]; do
        round=$((round + 1))
        if ! "$1"; then
            refused=$((refused + 1))
        elif ! cmp -s "$folder/good" "$folder/copy"; then
            wrong=$((wrong + 1))
        fi
    done
}

run by_the_copy
result="$refused $wrong"
run by_the_path
echo "$result $wrong"
