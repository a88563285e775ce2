# What the end-to-end tests share: a host on a workspace of its own, a user's hands, and comparisons. Sourced by bash, under
# ../support/with-display.
#
# The controls' places come from the nibs: a change of the layout needs no change here.

set -euo pipefail

e2e_source=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
e2e_build=${E2E_BUILD:-$e2e_source/build}
e2e_pictures=$e2e_build/pictures/e2e
e2e_name=$(basename "$0")${1:+-$1}${2:+-$2}
e2e_work=$(mktemp -d)
e2e_host=
e2e_window=

e2e_nibs=$e2e_source/Resources/Nibs
mkdir -p "$e2e_pictures"

# Stops the test with one line, a picture of the display and what the host said.
fail() {
  echo "$e2e_name: $*" >&2
  import -window root "$e2e_pictures/$e2e_name-failed.png" 2>/dev/null || true
  cat "$e2e_work/output" "$e2e_work/errors" >&2 2>/dev/null || true
  exit 1
}

end_test() {
  local status=$?
  [ -z "$e2e_host" ] || kill -KILL "$e2e_host" 2>/dev/null || true
  rm -rf "$e2e_work"
  exit "$status"
}
trap end_test EXIT

# within SECONDS COMMAND...: tries it until it succeeds; false when the time is over.
within() {
  local end=$((SECONDS + $1))
  shift
  until "$@"; do
    [ "$SECONDS" -lt "$end" ] || return 1
    sleep 0.1
  done
}

# --- The host and its windows ---------------------------------------------------------------------

# new_workspace SAMPLE: a copy of a sample, modes and times kept; its path is in $workspace.
new_workspace() {
  workspace=$e2e_work/workspace
  cp -a "$e2e_build/samples/$1" "$workspace"
}

# start_host OPTION...: opens the settings window on $workspace and waits for it.
start_host() {
  "$e2e_build/vireonix-host" -workspace "$workspace" "$@" >"$e2e_work/output" 2>"$e2e_work/errors" &
  e2e_host=$!
  within 30 window_appears ' vireonix$' || fail "the settings window did not open"
  e2e_window=$found_window
  xdotool windowactivate --sync "$e2e_window" 2>/dev/null
}

# window_appears NAME: whether a window of that name is on the display; its number is in $found_window.
window_appears() {
  found_window=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | tail -n 1) || true
  [ -n "$found_window" ]
}

# host_ended: whether the host's process is gone.
host_ended() { ! kill -0 "$e2e_host" 2>/dev/null; }

# end_of_host: waits for the host; its exit status is in $host_status.
end_of_host() {
  within 30 host_ended || fail "the host did not end"
  host_status=0
  wait "$e2e_host" || host_status=$?
  e2e_host=
}

# expect_icon: the window manager is given the host's icon, a drawing of 128 by 128 points.
expect_icon() {
  within 5 has_icon || fail "the window does not have the host's icon"
}
has_icon() { xprop -id "$e2e_window" _NET_WM_ICON | grep -q 'Icon (128 x 128)'; }

# expect_outcome STATUS LINE...: how the host ended and exactly what it reported.
expect_outcome() {
  local status=$1
  shift
  end_of_host
  [ "$host_status" -eq "$status" ] || fail "the host ended with $host_status instead of $status"
  diff <(printf '%s\n' "$@") "$e2e_work/output" >&2 || fail "the host reported something else"
}

# picture NAME: keeps what the display shows.
picture() { import -window root "$e2e_pictures/$e2e_name-$1.png"; }

# --- A user's hands -------------------------------------------------------------------------------

# frame_sum ID EDGE: where a control's left (x) or lower (y) edge lies in its nib's topmost view.
frame_sum() {
  xmllint --xpath "sum(//*[@id='$1']/ancestor-or-self::*/rect[@key='frame']/@$2)" "$(nib_of "$1")"
}

# frame_of ID SIZE: a control's own width or height.
frame_of() { xmllint --xpath "number(//*[@id='$1']/rect[@key='frame']/@$2)" "$(nib_of "$1")"; }

nib_of() {
  if grep -q "id=\"$1\"" "$e2e_nibs/PluginSettingsDelegate.xib"; then
    echo "$e2e_nibs/PluginSettingsDelegate.xib"
  else
    echo "$e2e_nibs/PrivateView.xib"
  fi
}

# lower_left ID: a control's lower left corner in the settings window, from the lower left.
lower_left() {
  local x y
  x=$(frame_sum "$1" x)
  y=$(frame_sum "$1" y)
  if [ "$(basename "$(nib_of "$1")")" = PrivateView.xib ]; then
    x=$((x + $(frame_sum PrivateSettingView x)))
    y=$((y + $(frame_sum PrivateSettingView y)))
  fi
  echo "$x $y"
}

# press WINDOW X Y: a click of a length that tracking loops notice.
press() {
  xdotool mousemove --window "$1" "$2" "$3"
  xdotool mousedown 1
  sleep 0.15
  xdotool mouseup 1
  # A release that is seen only after the mouse moved on would end a drag.
  sleep 0.4
}

# click CONTROL: in the middle of a control of the settings window.
click() {
  local x y height
  read -r x y < <(lower_left "$1")
  height=$(window_height)
  press "$e2e_window" $((x + $(frame_of "$1" width) / 2)) \
    $((height - y - $(frame_of "$1" height) / 2))
}

# top_left ID: a control's upper left corner in the settings window, from the upper left.
top_left() {
  local x y
  read -r x y < <(lower_left "$1")
  echo "$x $(($(window_height) - y - $(frame_of "$1" height)))"
}

window_height() { xdotool getwindowgeometry --shell "$e2e_window" | sed -n 's/^HEIGHT=//p'; }

# click_row TABLE ROW: a row of a table, counted from 0; the table shows its first row on top.
click_row() {
  local scroller="//*[@id='$1']/ancestor::scrollView[1]" nib x y height head row
  nib=$(nib_of "$1")
  x=$(xmllint --xpath "sum($scroller/ancestor-or-self::*/rect[@key='frame']/@x)" "$nib")
  y=$(xmllint --xpath "sum($scroller/ancestor-or-self::*/rect[@key='frame']/@y)" "$nib")
  height=$(xmllint --xpath "number($scroller/rect[@key='frame']/@height)" "$nib")
  head=$(xmllint --xpath "number(//*[@id='$1-header']/rect[@key='frame']/@height)" "$nib")
  row=$(xmllint --xpath "number(//*[@id='$1']/@rowHeight)" "$nib")
  x=$((x + $(frame_sum PrivateSettingView x) + 40))
  y=$((y + $(frame_sum PrivateSettingView y) + height - head - 1 - row * $2 - row / 2))
  press "$e2e_window" "$x" $(($(window_height) - y))
}

# type_into FIELD TEXT: replaces what the field holds.
type_into() {
  click "$1"
  xdotool key Home shift+End
  xdotool type --delay 30 "$2"
}

# close_window: as the window manager's close button does.
close_window() {
  xdotool windowactivate --sync "$e2e_window" 2>/dev/null
  xdotool key alt+F4
}

# answer OK|Cancel|YES|NO: presses that button of the question that is open.
answer() {
  local from_right WIDTH HEIGHT
  case $1 in OK | YES) from_right=42 ;; Cancel | NO) from_right=124 ;; esac
  expect_question
  eval "$(xdotool getwindowgeometry --shell "$found_window" | grep -E '^(WIDTH|HEIGHT)=')"
  press "$found_window" $((WIDTH - from_right)) $((HEIGHT - 22))
}

# expect_question: an alert is open; it is kept in a picture.
expect_question() {
  within 10 window_appears '^Alert$' || fail "no question appeared"
  picture question
}

# answer_by_key KEY: presses a key in the question that is open.
answer_by_key() {
  expect_question
  xdotool key "$1"
  within 10 is_gone '^Alert$' || fail "the question stayed open"
}

# is_gone NAME: whether no window of that name is on the display.
is_gone() { ! window_appears "$1"; }

# choose_file FOLDER: the only picture in a folder, in the open panel: types the folder's way, clicks the picture and presses Return.
choose_file() {
  within 10 window_appears '^Select a file' || fail "no open panel appeared"
  local panel=$found_window
  xdotool key Home shift+End
  xdotool type --delay 20 "$1/"
  sleep 0.5
  # The first file of the second column.
  press "$panel" 240 105
  picture choice
  xdotool key Return
  within 10 is_gone '^Select a file' || fail "the open panel stayed open"
}

# choose_item COMBO INDEX: an item of a combo box's list, by the arrow and the mouse.
choose_item() {
  local x y height line=22
  read -r x y < <(lower_left "$1")
  height=$(window_height)
  press "$e2e_window" $((x + $(frame_of "$1" width) - 14)) $((height - y - 13))
  press "$e2e_window" $((x + 30)) $((height - y + line * $2 + line / 2 - 1))
}

# open_colours: the colour panel, by the colour button; its number is in $found_window.
open_colours() {
  click btnTextColor
  within 10 window_appears '^Colors$' || fail "no colour panel appeared"
}

# enter_colour RED GREEN BLUE: types the three numbers into the open colour panel.
enter_colour() {
  local panel=$found_window y=156 number
  press "$panel" 165 60 # the sliders
  press "$panel" 74 110 # those of red, green and blue
  for number; do
    press "$panel" 167 "$y"
    xdotool key Home shift+End
    xdotool type --delay 30 "$number"
    xdotool key Return
    y=$((y + 22))
  done
  picture colour
}

# --- What is seen ---------------------------------------------------------------------------------

# colour_at X Y: the colour of a pixel of the settings window, as #RRGGBB.
colour_at() {
  import -window "$e2e_window" -depth 8 -crop "1x1+$1+$2" txt:- | grep -o '#[0-9A-F]\{6\}' | head -n 1
}

# middle_of ID: the colour in the middle of a control.
middle_of() {
  local x y
  read -r x y < <(top_left "$1")
  colour_at $((x + $(frame_of "$1" width) / 2)) $((y + $(frame_of "$1" height) / 2))
}

# share_of_preview COLOUR: how many of 1,000 pixels of the preview have nearly that colour.
share_of_preview() {
  local x y width height
  read -r x y < <(lower_left iWebView)
  width=$(frame_of iWebView width)
  height=$(frame_of iWebView height)
  import -window "$e2e_window" -crop \
    "${width}x$height+$x+$(($(window_height) - y - height))" +repage png:- |
    convert - -fuzz 4% -fill black +opaque "$1" -fill white -opaque "$1" \
      -format '%[fx:round(1000*mean)]' info:-
}

preview_has() { [ "$(share_of_preview "$1")" -ge "$2" ]; }

# expect_in_preview COLOUR SHARE: the preview comes to show that many of 1,000 pixels in a colour.
expect_in_preview() {
  within 15 preview_has "$1" "$2" ||
    fail "the preview shows $(share_of_preview "$1") of 1000 pixels in $1 and not $2"
}

# --- Comparisons ----------------------------------------------------------------------------------

# fingerprint FOLDER: one line for each entry: path, kind, mode, time, link target and content.
fingerprint() {
  (cd "$1" && find . -printf '%p %y %m %T@ %l\n' | sort && find . -type f -print0 | sort -z |
    xargs -0 -r sha256sum)
}

# expect_same NAME: the workspace is as it was when `fingerprint` wrote $e2e_work/NAME.
expect_same() {
  fingerprint "$workspace" >"$e2e_work/now"
  diff "$e2e_work/$1" "$e2e_work/now" >&2 || fail "the workspace is not as it was"
}

# value XPATH: of the slider document.
value() { xmllint --xpath "string($1)" "$workspace/intro_asset/data.xml"; }

# expect_value XPATH TEXT: a value of the slider document comes to be a text.
has_value() { [ "$(value "$1")" = "$2" ]; }
expect_value() { within 10 has_value "$1" "$2" || fail "$1 is '$(value "$1")' and not '$2'"; }

document_holds() { grep -qF -- "$1" "$workspace/intro_asset/data.xml"; }

# expect_in_document TEXT: the slider document comes to hold the text.
expect_in_document() { within 10 document_holds "$1" || fail "the document does not hold: $1"; }

# What the plug-in keeps in the temporary folder: the backup, and the mark beside it.
backups() { find "$TMPDIR" -maxdepth 3 -path "$e2e_work" -prune -o -name 'vireonix*' -print; }

backup_is_whole() {
  local found
  for found in $(backups); do
    diff -rq --no-dereference "$workspace" "$found" >/dev/null 2>&1 && return
  done
  return 1
}

# expect_backup: a copy of the whole workspace comes to be there.
expect_backup() { within 10 backup_is_whole || fail "there is no backup of the workspace"; }

expect_no_backup() { [ -z "$(backups)" ] || fail "left behind: $(backups)"; }
