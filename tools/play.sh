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

# picture FILE [PIXELS]: the current form as it stands on the screen, with so much of what hangs below
# it, once it no longer changes.
picture() {
  local left top width height before='' now attempt
  ask away # a control under the pointer looks different
  ask rect
  read -r left top width height <<< "$answer"
  height=$((height + ${2:-0}))
  for ((attempt = 0; attempt < 600; ++attempt)); do
    import -window root -crop "${width}x$height+$left+$top" +repage "$1"
    now=$(convert "$1" rgb:- | cksum)
    [[ $now != "$before" ]] || return 0
    before=$now
    sleep 0.05
  done
  echo "$1 never comes to rest" >&2
  return 1
}

# read_text CONTROL: a text that every dialog has; a busy client may take its time to tell it.
read_text() {
  local attempt
  for ((attempt = 0; attempt < 1800; ++attempt)); do
    ask read "$1" || return 1
    [[ -z $answer ]] || return 0
    sleep 0.1
  done
}

is_menu() { read_text idxCaption && [[ $answer == "$menu_title" ]]; }

# fill TEXT...: types each text into a field and Enter after it.
fill() {
  local text
  for text in "$@"; do
    ask type "$text"
    ask key Enter
  done
}

# Answers the open message box the way an operator would: Enter where there is an answer button, else
# the close button. One that closes itself is waited for.
answer_message() {
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

# first_log_on NAME PASSWORD PICTURE: the administrator has to renew the generated password.
first_log_on() {
  fill "$1"
  ask type "$2"
  picture "$3-filled.png"
  ask key Enter
  ask next
  picture "$3-message.png"
  ask key Enter
  ask next
  picture "$3-renewal.png"
  password=changed-$2
  fill "$2" "$password"
  ask type "$password"
  picture "$3-renewal-filled.png"
  ask key Enter
  ask next
  fill "$password"
}

# log_on_by_list PICTURE: picks the first user, who is the administrator.
log_on_by_list() {
  ask key F4
  ask list
  picture "$1-list.png" "$answer"
  ask key Home
  ask key Enter # takes the entry and leads to the password
  ask type "$password"
  picture "$1-filled.png"
  ask key Enter
}

# answer_dialog ENTRY FORM NAME PICTURE: ends the dialog that an entry of the menu has opened.
answer_dialog() {
  case $2 in
    FLogOn)
      if $renewed; then
        fill "$3" "$password"
      else
        first_log_on "$3" "$password" "$4"
        renewed=true
      fi
      ;;
    FLogOnCombo) log_on_by_list "$4" ;;
    FMessageBox) answer_message "$1" ;;
    # Where a finger is expected, only the button gives up.
    FDirectorySelectTouch | FFileSelectTouch) ask click keyCancel ;;
    *) ask key Esc ;;
  esac
}

# play FOLDER NAME PASSWORD: opens every entry of the menu once, then quits it. Name and password are
# those of the first administrator. The file entries.txt says which dialog and picture an entry has, if any.
play() {
  local entry number count file form password=$3 renewed=false
  rm -rf "$1"
  mkdir -p "$1"
  # shellcheck disable=SC2154 # set by desktop.sh
  coproc driver { "$wine64" build/win64/bin/krxdrive.exe 2> /dev/null; }
  ask wait FMessageBox
  picture "$1/00-menu.png"
  while true; do
    read_text idxMessage
    [[ $answer =~ ^Entry\ ([0-9]+)\ of\ ([0-9]+)\\n(.*)$ ]] ||
      { echo "this is not the menu: $answer" >&2; return 1; }
    number=${BASH_REMATCH[1]} count=${BASH_REMATCH[2]} entry=${BASH_REMATCH[3]}
    ask click 'keyButton(0)'
    ask next
    form=$answer
    file=-
    if ! is_menu; then
      file=$(tr -cs '[:alnum:]' '-' <<< "${entry,,}")
      file=$1/$(printf '%02d' "$number")-${file%-}
      picture "$file.png"
      answer_dialog "$entry" "$form" "$2" "$file"
      ask next
    fi
    printf '%s\t%s\t%s\n' "$form" "${file##*/}" "$entry" >> "$1/entries.txt"
    ((number < count)) || break
  done
  ask click 'keyButton(2)'
  ask gone
  local input=${driver[1]}
  exec {input}>&-
}
