# shellcheck shell=bash disable=SC2154 # set by msi
# What wixl cannot say, written into the tables of an installer; sourced by `msi`.

# edit PACKAGE TABLE COMMAND...: passes the rows of a table through a command.
edit() {
  local package=$1 table=$2
  shift 2
  {
    msiinfo export "$package" "$table" | "$@" > "build/msi/$table.idt"
  } && (cd build/msi && msibuild "$OLDPWD/$package" -i "$table.idt")
}

# rows PROGRAM [NAME=VALUE...]: an awk program for the rows behind the three lines of a table's head.
rows() {
  local program=$1
  shift
  awk -v FS='\t' -v OFS='\t' -v ORS='\r\n' "${@/#/-v}" "{ sub(/\r\$/, \"\") } NR <= 3 { print; next } $program"
}

# versions FOLDER: lines "FILE VERSION" of those in a folder that carry a version.
versions() {
  local file version
  for file in "$1"/*.{dll,exe}; do
    version=$(file_version "$file") || return 1
    [[ -z $version ]] || echo "${file##*/} $version"
  done
}

# file_version FILE: its version in four parts, as its resource says it in words.
file_version() {
  local version
  version=$(strings -el "$1" | grep -A1 -xm1 FileVersion | sed -n 2p)
  [[ -n $version ]] || return 0
  [[ $version =~ ^[0-9.]+$ ]] || { echo "$1: $version is no version for an installer" >&2; return 1; }
  while [[ $version != *.*.*.* ]]; do version+=.0; done
  echo "$version"
}

# complete PACKAGE: completes the tables of an installer that wixl has made of the files in $staged.
complete() {
  local versions
  versions=$(versions "$staged" | tr '\n' ' ')
  # The root that stands for the machine or the user, by the kind of package; and what says that names of folders in a
  # value are to be replaced where it is read.
  edit "$1" Registry rows '{ $2 = -1 } $4 == "EventMessageFile" { sub(/^(#%)?/, "#%", $5) } { print }'
  # A file with a version is replaced by that, one without by what it holds.
  edit "$1" File rows 'BEGIN { n = split(v, w, " "); for (i = 1; i < n; i += 2) of[w[i]] = w[i + 1] }
    $1 in of { $5 = of[$1]; $6 = "1033" } { print }' "v=$versions"
  edit "$1" MsiFileHash rows 'index(" " v, " " $1 " ") == 0 { print }' "v=$versions"
  # The dialogs themselves cannot be left out (16), whatever is chosen, and nothing is installed at its first use (8).
  edit "$1" Feature rows '{ $2 = $1 == "Dialogs" ? "" : "Dialogs"; $8 = $1 == "Dialogs" ? 24 : 8; print }'
  # What is written under a condition: names of classes for this width alone.
  edit "$1" Component rows '$1 ~ /Apart$/ { $5 = "NOT CLASSESSHARED" }
    w == "x64" && $1 ~ /Names$/ { $5 = "CLASSESSHARED" } { print }' "w=$width"
  # The name of a key's own value.
  edit "$1" RegLocator rows '{ if ($4 == "@") $4 = ""; print }'
  choices > build/msi/Condition.idt
  (cd build/msi && msibuild "$OLDPWD/$1" -i Condition.idt)
  # The folders around the product's own go when they are empty.
  edit "$1" RemoveFile rows '{ print } END { for (i = split(f, w, " "); i > 0; --i)
    print "Remove" w[i], "Dialogs", "", w[i], 2 }' "f=$(around)"
}

# choices: the table that says, by what was remembered, which parts an upgrade installs. It does not replace what the
# installer does about it, which not every platform does.
choices() {
  local feature
  printf '%s\r\n' $'Feature_\tLevel\tCondition' $'s38\ti2\tS255' $'Condition\tFeature_\tLevel'
  for feature in Runtime Help Samples; do
    [[ $feature == Help && ! -e $staged/$help ]] ||
      printf '%s\t1000\tNOT Installed AND HADDIALOGS AND NOT HAD%s\r\n' "$feature" "${feature^^}"
  done
  printf 'UsersTool\t1\tHADUSERSTOOL\r\n'
}

around() { [[ $scope == user ]] && echo KorvelFolder ProgramsFolder || echo KorvelFolder; }
