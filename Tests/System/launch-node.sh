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
other-version)
    printf 'HELLO 33\n{"protocol":99,"version":"9.8.7"}\n\n'
    exec sleep 60
    ;;
esac
exec "$@"
