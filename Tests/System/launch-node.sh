#!/bin/sh
# launch-node.sh HOST PROGRAM...: stands for the program that starts another one on a host; all hosts are this machine.
host=$1
shift
case $host in
failing)
    echo "ssh: Could not resolve hostname failing: Name or service not known" >&2
    exit 255
    ;;
silent) exec sleep 60 ;;
talkative)
    # As a login script does, the last line without an end.
    printf 'Welcome to this machine\nHELLO 5\nworld\n$ '
    exec "$@"
    ;;
noise-*)
    # So many bytes, with the end of the line.
    head -c $((${host#noise-} - 1)) /dev/zero | tr '\0' x
    echo
    exec "$@"
    ;;
many-errors)
    head -c 3000000 /dev/zero | tr '\0' x >&2
    yes 'a warning of the login script' | head -c 3000000 >&2
    exec "$@"
    ;;
closed) exec "$@" >&- ;;
garbage)
    head -c 300000 /dev/zero | tr '\0' '\377'
    exec sleep 60
    ;;
half)
    printf 'HELLO 33\n{"protocol":99'
    exit 0
    ;;
newer)
    ZO_FAKE_RELEASE=5.12.1
    export ZO_FAKE_RELEASE
    ;;
other-version)
    printf 'HELLO 33\n{"protocol":99,"version":"9.8.7"}\n\n'
    exec sleep 60
    ;;
esac
exec "$@"
