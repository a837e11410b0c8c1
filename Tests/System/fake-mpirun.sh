#!/bin/sh
# fake-mpirun.sh ARGUMENT...: stands for mpirun with ParaView's server. ZO_FAKE_JOBS names a folder; its file "jobs" has a
# line for each job, the last one for all further ones: "FIRST [EXIT]" says the recorded log FIRST and exits, or stays
# without EXIT; "FIRST>THEN EXIT" waits for the file "go" in between. "deaf" before it hears no signal that can be caught.
# "serving" has the process whose number comes in the file "client" for its client, and ends with it.
# What it was called with goes to "calls".
cd "$ZO_FAKE_JOBS" || exit 1
printf '%s\n' "$*" >> calls
number=$(wc -l < calls)
line=$(sed -n "${number}p" jobs)
[ -n "$line" ] || line=$(tail -n 1 jobs)
case $line in
"deaf "*)
    trap '' TERM INT
    line=${line#deaf }
    ;;
esac
logs=${line%% *}
exit=${line#"$logs"}
say()
{
    [ -z "$1" ] || [ "$1" = silent ] && return
    cat "$ZO_FAKE_LOGS/$1.err" >&2
    cat "$ZO_FAKE_LOGS/$1.out"
}
if [ "$logs" = serving ]; then
    say accepting
    while [ ! -e client ]; do sleep 0.02; done
    client=$(cat client)
    rm -f client
    echo "Client connected."
    while kill -0 "$client" 2>/dev/null; do sleep 0.02; done
    echo "Exiting..."
    exit 0
fi
say "${logs%%>*}"
case $logs in
*">"*)
    while [ ! -e go ]; do sleep 0.02; done
    rm -f go
    say "${logs#*>}"
    ;;
esac
[ -z "$exit" ] || exit "$exit"
while true; do sleep 0.05; done
