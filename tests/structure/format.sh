#!/bin/sh
# Every C++ file is as clang-format leaves it.
cd "$(dirname "$0")/../.." || exit 1
set -- $(ls -d vxprivacy tools tests bench examples fuzz 2>/dev/null)
find "$@" -name '*.h' -o -name '*.cpp' | xargs -n 20 clang-format --dry-run --Werror
