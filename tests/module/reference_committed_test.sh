#!/usr/bin/env bash
# The committed member reference is the one the build writes from the dispatch tables and the
# meanings: a table or a meaning changed without copying the result fails here.
#   reference_committed_test.sh WRITTEN COMMITTED
set -u
written=$1 committed=$2
if cmp -s "$written" "$committed"; then
  echo "reference: $committed is the one the build writes"
  exit 0
fi
diff -u "$committed" "$written" | head -60
echo "FAIL: $committed differs from the reference the build writes; after a change to a dispatch table or"
echo "to tools/mktypelib/reference-meanings.txt, copy it: cp $written $committed"
exit 1
