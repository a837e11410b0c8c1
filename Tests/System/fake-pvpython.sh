#!/bin/bash
# Stands in for pvpython: reads what is to be shown and plays the row of FAKE_PVPYTHON. What it was asked for goes to the
# file FAKE_PVPYTHON_REQUEST.
say() { printf '%s %d\n%s\n' "$1" "${#2}" "$2"; }
read -r verb size
head -c "$size" >"${FAKE_PVPYTHON_REQUEST:-/dev/null}"
[ "$verb" = SHOW ] || exit 9
[ -z "${FAKE_PVPYTHON_REQUEST:-}" ] || printf '%s\n' "$DISPLAY" "$@" >"$FAKE_PVPYTHON_REQUEST.arguments"
case "$FAKE_PVPYTHON" in
client)
    # Of the server that fake-mpirun.sh plays, until the file "wanted" comes.
    cd "$ZO_FAKE_JOBS" || exit 1
    echo $$ >client.new
    mv client.new client
    while [ -e client ]; do sleep 0.02; done
    say SHOWN '{}'
    while [ ! -e wanted ]; do sleep 0.02; done
    rm wanted
    say WANTED '{}'
    ;;
shown)
    say SHOWN '{}'
    exec sleep 600
    ;;
wanted)
    say SHOWN '{}'
    say WANTED '{}'
    ;;
lost)
    say SHOWN '{}'
    say FAILED '{"reason": "the server is gone"}'
    exit 1
    ;;
failed)
    say FAILED '{"reason": "no answer"}'
    exit 1
    ;;
died)
    echo "something broke" >&2
    exit 3
    ;;
noise) echo "Welcome to this machine" ;;
hung) exec sleep 600 ;;
stubborn)
    trap '' TERM
    say SHOWN '{}'
    while true; do sleep 1; done
    ;;
esac
