# shellcheck shell=bash
# Plays the menu of the demo by real input and takes a picture of every dialog; sourced after
# desktop.sh, which knows Wine.

menu_title='KRXDialogs demo'

# ask COMMAND: sends a command to the driver; its answer is in $answer. Fails when the driver does.
ask() {
  printf '%s\n' "$*" >&"${driver[1]}"
  IFS= read -r answer <&"${driver[0]}" || { echo 'the driver has ended' >&2; return 1; }
  answer=${answer%$'\r'}
  if [[ $answer != ok* ]]; then
    echo "$*: $answer" >&2
    return 1
  fi
  answer=${answer#ok }
}

# picture FILE: the current form as it stands on the screen, once it no longer changes.
picture() {
  local left top width height before='' now attempt
  ask rect
  read -r left top width height <<< "$answer"
  for ((attempt = 0; attempt < 50; ++attempt)); do
    import -window root -crop "${width}x$height+$left+$top" +repage "$1"
    now=$(convert "$1" rgb:- | cksum)
    [[ $now != "$before" ]] || return 0
    before=$now
    sleep 0.05
  done
  echo "$1 never comes to rest" >&2
  return 1
}

is_menu() { ask read idxCaption && [[ $answer == "$menu_title" ]]; }

# Answers the open dialog the way an operator would: Enter where there is an answer button, else
# the close button. A dialog that closes itself is waited for.
answer_dialog() {
  if [[ $1 == *itself* ]]; then
    ask gone
  elif ask has 'keyButton(0)' && [[ $answer == yes ]]; then
    ask key Enter
  elif ask has 'keyButton(2)' && [[ $answer == yes ]]; then
    ask key Enter
  else
    ask click keyClose
  fi
}

# play FOLDER: opens every entry of the menu once, then quits it.
play() {
  local entry number count file
  rm -rf "$1"
  mkdir -p "$1"
  # shellcheck disable=SC2154
  coproc driver { "$wine64" build/win64/bin/krxdrive.exe 2> /dev/null; }
  ask wait FMessageBox
  picture "$1/00-menu.png"
  while true; do
    ask read idxMessage
    [[ $answer =~ ^Entry\ ([0-9]+)\ of\ ([0-9]+)\\n(.*)$ ]] ||
      { echo "this is not the menu: $answer" >&2; return 1; }
    number=${BASH_REMATCH[1]} count=${BASH_REMATCH[2]} entry=${BASH_REMATCH[3]}
    ask click 'keyButton(0)'
    ask next
    if ! is_menu; then
      file=$(tr -cs '[:alnum:]' '-' <<< "${entry,,}")
      picture "$1/$(printf '%02d' "$number")-${file%-}.png"
      answer_dialog "$entry"
      ask next
    fi
    ((number < count)) || break
  done
  ask click 'keyButton(2)'
  ask gone
  local input=${driver[1]}
  exec {input}>&-
}
