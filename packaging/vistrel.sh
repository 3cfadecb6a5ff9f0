#!/bin/sh
# vistrel: starts the program from its folder, ../lib/vistrel beside the
# folder this command really stands in (links followed), so that an
# installed copy and an unpacked one both find their own program.
here=$(dirname "$(readlink -f "$0")")
exec "$here/../lib/vistrel/Vistrel" "$@"
