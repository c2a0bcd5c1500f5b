# Sourced by every script, first: works from the top folder, and ends with the first command that fails,
# saying which one it was.
set -Eeuo pipefail
trap 'echo "$0: line $LINENO ended with $?: $BASH_COMMAND" >&2' ERR
cd "$(dirname "${BASH_SOURCE[0]}")/.."
