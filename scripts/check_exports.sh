#!/usr/bin/env bash
# check_exports.sh LIBRARY [--update], LIBRARY by its absolute path: compares the dynamic symbols of libgleigem.so
# with the list in tests/abi/exported_symbols.txt, or writes that list anew.
#
# The list has what every build exports: functions defined in a source file, tables and type information
# of the interfaces. Inline functions of the public types come and go with the optimiser; they must be the
# library's own all the same. The lock operations are looked for by name: what kind of symbol their variable is
# depends on the compiler.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

library=$1
list=tests/abi/exported_symbols.txt
locks='boost::serialization::singleton_module::'

exported=$(nm --dynamic --defined-only --demangle "$library" | cut -d ' ' -f 2-)
firm=$(sed -nE "/ $locks/d; s/^[TDRBV] //p" <<<"$exported" | LC_ALL=C sort -u)
if [[ ${2-} == --update ]]; then
    printf '%s\n' "$firm" >"$list"
fi

diff --label "$list" --label "$library" --unified=0 "$list" - <<<"$firm"

if strangers=$(grep -vE "^. ((typeinfo|typeinfo name|vtable) for )?(lf::import::|$locks)" <<<"$exported"); then
    printf 'exported, but none of the public interface:\n%s\n' "$strangers"
    exit 1
fi
for operation in get_lock is_locked lock unlock; do
    grep -qF "W $locks$operation()" <<<"$exported" || {
        printf 'not exported: %s%s()\n' "$locks" "$operation"
        exit 1
    }
done
