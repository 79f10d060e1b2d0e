#!/usr/bin/env bash
# The completion of bash: each line of the table is a command line and the first, the number and the last of the offers.
set -u
PATH=$1:$PATH
export TMX_DESCRIPTION=$1/../parameters.json
source "$2"
failed=0
while IFS='|' read -r line first count last; do
  COMP_LINE=$line COMP_POINT=${#line} COMPREPLY=()
  read -ra COMP_WORDS <<<"$line"
  [[ $line != *' ' ]] || COMP_WORDS+=("")
  COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
  _tmxctl tmxctl "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}"
  got="${COMPREPLY[0]-}|${#COMPREPLY[@]}|${COMPREPLY[*]: -1}"
  [[ $got == "$first|$count|$last" ]] || { echo "$line: $got, not $first|$count|$last"; failed=1; }
done <<'TABLE'
tmxctl |get|21|onvif.
tmxctl wa|watch|1|watch
tmxctl 'net|network.|1|network.
tmxctl get network.destination(2).ho|network.destination(2).host|2|network.destination(2).host=
tmxctl 'network.destination(|network.destination(1)|5|network.destination(5)
tmxctl 'encode(1).type=h|encode(1).type=h264baseline|2|encode(1).type=h264high
tmxctl network.ntp.unit=|min|3|day
tmxctl 'camera.scene.image.color=|camera.scene.image.color=+|2|camera.scene.image.color=-
tmxctl 'ui.encode(1).cbr_mode(mpeg4)=v|ui.encode(1).cbr_mode(mpeg4)=vfs|2|ui.encode(1).cbr_mode(mpeg4)=vbr
tmxctl 'nothing.here||0|
tmxctl --as |admin|5|debug
tmxctl --dr|--dry-run|1|--dry-run
TABLE
exit $failed
