#!/usr/bin/env bash
# tools/test-summary must count the skipped tests by their reasons and end with ctest's summary.
set -euo pipefail
summary="$1"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

skipped() { # NAME REASON
  printf '<testcase name="%s" status="notrun"><skipped message="x"/><system-out>' "$1"
  printf 'a_test.cpp:7: Skipped\n%s\n\n[  SKIPPED ] %s\n</system-out></testcase>\n' "$2" "$1"
}
{
  echo '<testsuite>'
  skipped A.One 'no corpus'
  skipped A.Two 'no corpus'
  skipped A.Three 'no office suite'
  echo '<testcase name="A.Four" status="run"><system-out>fine</system-out></testcase>'
  echo '</testsuite>'
} >"$work/results.xml"

cat >"$work/said" <<'END'
1/5 Test #1: A.One ***Skipped
67% tests passed, 1 tests failed out of 5

Total Test time (real) =   1.00 sec

The following tests did not run:
	  1 - A.One (Skipped)
	  2 - A.Two (Skipped)
	  3 - A.Three (Skipped)

The following tests FAILED:
	  5 - A.Five (Failed)
END
cat >"$work/wanted" <<'END'
1/5 Test #1: A.One ***Skipped

Total Test time (real) =   1.00 sec


The following tests FAILED:
	  5 - A.Five (Failed)
Skipped: 2 tests, no corpus
Skipped: 1 test, no office suite
67% tests passed, 1 tests failed out of 5
END
"$summary" "$work/results.xml" <"$work/said" >"$work/got"
# A blank line tells nothing.
diff <(grep -v '^$' "$work/wanted") <(grep -v '^$' "$work/got")

echo 'No test configuration file found!' >"$work/said"
! "$summary" "$work/results.xml" <"$work/said" >/dev/null || { echo "no tests, no failure"; exit 1; }
echo "The reasons are counted, and the summary stands last."
