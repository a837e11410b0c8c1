#!/bin/sh
# stand-in-controller.sh controller: says to a host what a controller of four nodes would, all of one kind in one write.
# The first SHOW loses two nodes at once, the second one another.
say()
{
    text=
    verb=$1
    shift
    for payload; do
        text="$text$verb ${#payload}
$payload
"
    done
    printf '%s' "$text"
}
trap 'kill $beating 2>/dev/null' EXIT
say HELLO '{"protocol":1,"version":"0"}'
while sleep 0.2 && printf 'BEAT 0\n\n'; do :; done &
beating=$!
shown=0
while read -r verb size; do
    head -c "$size" >/dev/null
    read -r _
    case $verb in
    SESSION)
        say NODE '{"id":"n1","state":"connected"}' '{"id":"n2","state":"connected"}' \
            '{"id":"n3","state":"connected"}' '{"id":"n4","state":"connected"}'
        say ANSWERED '{"inUse":[],"short":[],"failed":[]}'
        ;;
    OPEN)
        say NODE '{"id":"n1","state":"running"}' '{"id":"n2","state":"running"}' \
            '{"id":"n3","state":"running"}' '{"id":"n4","state":"running"}'
        say OPENED '{"failed":[],"running":["n1","n2","n3","n4"]}'
        ;;
    SHOW)
        shown=$((shown + 1))
        if [ "$shown" = 1 ]; then
            say NODE '{"id":"n1","state":"lost","reason":"silent"}' '{"id":"n2","state":"lost","reason":"silent"}'
        else
            say NODE '{"id":"n3","state":"lost","reason":"silent"}'
        fi
        ;;
    QUIT) exit 0 ;;
    esac
done
