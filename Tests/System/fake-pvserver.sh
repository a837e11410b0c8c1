#!/bin/sh
# fake-pvserver.sh --version | --probe: stands for ParaView's server and for the program of nodes, as a probe asks them.
case $1 in
--version) echo "paraview version ${ZO_FAKE_RELEASE:-5.11.0}" ;;
--probe)
    case $DISPLAY in
    :987*)
        echo "qt.qpa.xcb: could not connect to display $DISPLAY" >&2
        exit 134
        ;;
    esac
    printf 'version: 1\nscreens: 1920x1080+0+0\nmemory: %s MiB\n' "${ZO_FAKE_MEMORY:-8000}"
    ;;
esac
