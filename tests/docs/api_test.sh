#!/usr/bin/env bash
# api_test.sh ROOT DOXYGEN DIRECTORY: Doxygen takes every public header without a warning, and shows
# the comment of an operation.
set -euo pipefail

rm -rf "$3"
mkdir -p "$3"
cd "$1"
{
  cat docs/Doxyfile
  printf 'OUTPUT_DIRECTORY = "%s"\nGENERATE_XML = YES\nGENERATE_HTML = NO\n' "$3"
} | "$2" -

for header in include/*.h src/rest/request/*.h platform/*/include/orma/*/*.h; do
  name=$(basename "$header" .h)
  [[ -e $3/xml/${name//_/__}_8h.xml ]] || {
    printf 'FAILED: %s is not in the reference\n' "$header" >&2
    exit 1
  }
done
grep -q '<programlisting filename=".cpp">' "$3/xml/emftopointerface_8h.xml" || {
  echo 'FAILED: the example of a header is not shown as code' >&2
  exit 1
}
(($(grep -c '<para>' "$3/xml/classEMFTopoI.xml") > 10)) || {
  echo 'FAILED: the comments are not shown' >&2
  exit 1
}
