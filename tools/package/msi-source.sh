# shellcheck shell=bash disable=SC2154 # set by msi
# The source of an installer; sourced by `msi`, which sets `width`, `scope`, `version` and `staged`.

# Never changed: the installer knows the versions of a product by it.
declare -A upgrade_codes=(
  [x64-machine]='{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C4001}'
  [x64-user]='{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C4002}'
  [x86-machine]='{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C4003}'
  [x86-user]='{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C4004}'
)

# guid NAME: the same identifier for the same name, at all times and on all machines.
guid() {
  local hash
  hash=$(printf 'KRXDialogs installer %s' "$1" | sha1sum)
  hash=${hash^^}
  echo "{${hash:0:8}-${hash:8:4}-5${hash:13:3}-A${hash:17:3}-${hash:20:12}}"
}

# identifier PATH: a path as an identifier of a table, which holds neither all letters nor long names.
identifier() {
  local hash
  hash=$(printf %s "$1" | sha1sum)
  set -- "${1//[^A-Za-z0-9]/_}"
  echo "_${1: -((${#1} < 40 ? ${#1} : 40))}_${hash:0:8}"
}

# component ID BITS CONTENT...: a component of this width and scope alone. BITS says which part of the registry it
# means.
component() {
  local id=$1 bits=$2
  shift 2
  component_as "$id" "$bits" "$(guid "$id $width $scope")" "$@"
}

component_as() {
  local id=$1 bits=$2 guid=$3 wide=no
  shift 3
  [[ $bits != 64 ]] || wide=yes
  echo "<Component Id=\"$id\" Guid=\"$guid\" Win64=\"$wide\">"
  printf '%s\n' "$@"
  echo '</Component>'
}

# file ID PATH: a file of the staged tree that its component is known by.
file() { echo "<File Id=\"$1\" Name=\"${2##*/}\" Source=\"$staged/$2\" KeyPath=\"yes\"/>"; }

# remembered NAME VALUE: a value that an upgrade finds again. The widths' packages of a user share the key.
remembered() {
  echo "<RegistryValue Root=\"HKMU\" Key=\"$memory\" Name=\"$1 $width\" Type=\"string\" Value=\"$2\"/>"
}
memory='Software\Korvel\KRXDialogs'

# recall PROPERTY NAME: sets a property to what has been remembered.
recall() {
  local root=HKLM wide=yes
  [[ $scope == machine ]] || root=HKCU
  [[ $width == x64 ]] || wide=no
  echo "<Property Id=\"$1\"><RegistrySearch Id=\"Recall$1\" Root=\"$root\" Key=\"$memory\" Name=\"$2 $width\" Type=\"raw\" Win64=\"$wide\"/></Property>"
}

own_bits() { [[ $width == x64 ]] && echo 64 || echo 32; }

# module COMPONENT FILE CONTENT...: a component with its registration.
module() {
  local windows=win32
  [[ $width == x86 ]] || windows=win64
  component "$1" "$(own_bits)" "$(file "$2" "$2")" "$(class_values "$1" "$2" "$windows")" \
    "$([[ $width == x86 ]] || interface_values "$1")" "${@:3}"
}

# shared COMPONENT: what both widths write alike. These are components that their packages share, so that they stay
# until the last of them goes. Where each width has names of classes for itself, as an older Wine without x86 has,
# x64 writes its own instead: programs for x86 do not see the name of the installer's own files there.
shared() {
  [[ $width == x86 ]] ||
    component "$1Apart" 64 "$(name_values "$1" | key_path)" "$(library_values "$1")"
  component_as "$1Names" 32 "$(guid "$1Names $scope")" "$(name_values "$1" | key_path)"
  component_as "$1Shared" 32 "$(guid "$1Shared $scope")" "$(library_values "$1" | key_path)" "$(interface_values "$1")"
}

# events: the source of the users' events, which the log of the machine finds the text of in the runtime. Both widths
# share it; it names the one that was installed last.
events() {
  local key='SYSTEM\CurrentControlSet\Services\EventLog\Application\KRXUsers'
  component_as RuntimeEvents 32 "$(guid "RuntimeEvents $scope")" \
    "<RegistryValue Root=\"HKMU\" Key=\"$key\" Name=\"TypesSupported\" Type=\"integer\" Value=\"7\" KeyPath=\"yes\"/>" \
    "<RegistryValue Root=\"HKMU\" Key=\"$key\" Name=\"EventMessageFile\" Type=\"expandable\" Value=\"[#KorvelRuntime.dll]\"/>"
}

# key_path: makes the first value of the input the one that its component is known by.
key_path() { sed '1s|/>$| KeyPath="yes"/>|'; }

# entry ID NAME TARGET: an entry of the start menu.
entry() {
  component "$1" "$(own_bits)" \
    "<Shortcut Id=\"$1\" Directory=\"StartMenu\" Name=\"$2\" Target=\"$3\"/>" \
    "<RemoveFolder Id=\"$1Menu\" On=\"uninstall\"/>" \
    "$(remembered "$1" 1 | key_path)"
}

# tree FOLDER: the components of the files in a folder of the staged tree and below.
tree() {
  local path
  for path in "$staged/$1"/*; do
    path=${path#"$staged/"}
    if [[ -d $staged/$path ]]; then
      echo "<Directory Id=\"$(identifier "$path")\" Name=\"${path##*/}\">"
      tree "$path"
      echo '</Directory>'
    else
      component "$(identifier "$path")" "$(own_bits)" "$(file "$(identifier "$path")" "$path")"
    fi
  done
}

# feature ID LEVEL TITLE DESCRIPTION COMPONENT...
feature() {
  echo "<Feature Id=\"$1\" Level=\"$2\" Title=\"$3\" Description=\"$4\">"
  printf '<ComponentRef Id="%s"/>\n' "${@:5}"
  echo '</Feature>'
}

# trees FOLDER: the components that `tree` writes.
trees() {
  local path
  while IFS= read -r path; do identifier "${path#"$staged/"}"; done < <(find "$staged/$1" -type f -not -name '.*' | sort)
}

# notices: what everybody gets to read.
notices() { (cd "$staged" && find . -maxdepth 1 -name '*.txt' -o -maxdepth 1 -name '*.md' | sed 's|^./||' | sort); }

folders() {
  local notice
  case $width-$scope in
    *-user) echo '<Directory Id="LocalAppDataFolder"><Directory Id="ProgramsFolder" Name="Programs">' ;;
    x64-*) echo '<Directory Id="ProgramFiles64Folder">' ;;
    *) echo '<Directory Id="ProgramFilesFolder">' ;;
  esac
  # An installer tries to remove the folders of its components alone: these lie in the outermost.
  [[ $scope == machine ]] || shared Dialogs
  echo '<Directory Id="KorvelFolder" Name="Korvel">'
  [[ $scope == user ]] || shared Dialogs
  echo '<Directory Id="INSTALLDIR" Name="KRXDialogs">'
  shared Runtime
  [[ $scope == user ]] || events
  module Dialogs KRXDialogs.dll "$(remembered Folder '[INSTALLDIR]')"
  module Runtime KorvelRuntime.dll "$(remembered Runtime 1)"
  component UsersTool "$(own_bits)" "$(file krxusers.exe krxusers.exe)" "$(remembered UsersTool 1)"
  if [[ -e $staged/$help ]]; then
    component Help "$(own_bits)" "$(file "$help" "$help")" "$(remembered Help 1)"
  fi
  for notice in $(notices); do
    component "$(identifier "$notice")" "$(own_bits)" "$(file "$(identifier "$notice")" "$notice")"
  done
  echo '<Directory Id="SamplesFolder" Name="samples">'
  tree samples
  echo '</Directory><Directory Id="TextsFolder" Name="texts">'
  tree texts
  echo '</Directory></Directory></Directory></Directory>'
  [[ $scope != user ]] || echo '</Directory>'
  echo '<Directory Id="ProgramMenuFolder"><Directory Id="StartMenu" Name="KRXDialogs">'
  [[ ! -e $staged/$help ]] || entry HelpEntry 'KRXDialogs help' "[#$help]"
  entry SamplesEntry 'KRXDialogs samples' '[SamplesFolder]'
  echo '</Directory></Directory>'
}

features() {
  local samples texts notices apart=() events=()
  mapfile -t notices < <(for file in $(notices); do identifier "$file"; done)
  [[ $width == x86 ]] || apart=(Apart)
  [[ $scope == user ]] || events=(RuntimeEvents)
  mapfile -t samples < <(trees samples)
  mapfile -t texts < <(trees texts)
  feature Dialogs 1 Dialogs 'The dialogs and their registration' Dialogs \
    DialogsNames DialogsShared "${apart[@]/#/Dialogs}" "${notices[@]}"
  feature Runtime 1 'Reference runtime' 'Texts, fonts and users, unless the plant brings its own' \
    Runtime RuntimeNames RuntimeShared "${apart[@]/#/Runtime}" "${events[@]}" "${texts[@]}"
  feature UsersTool 1000 'Tool for users' 'Creates the first administrator' UsersTool
  if [[ -e $staged/$help ]]; then
    feature Help 1 Help 'The manual, with an entry in the start menu' Help HelpEntry
  fi
  feature Samples 1 Samples 'Samples, with an entry in the start menu' SamplesEntry "${samples[@]}"
}

# The whole source.
source_text() {
  local upgrade_code=${upgrade_codes[$width-$scope]} whose=perMachine
  [[ $scope == machine ]] || whose=perUser
  cat << END
<?xml version="1.0" encoding="utf-8"?>
<Wix xmlns="http://schemas.microsoft.com/wix/2006/wi">
<Product Id="$(guid "product $width $scope $version")" Name="KRXDialogs" Language="1033" Version="$version"
  Manufacturer="Korvel" UpgradeCode="$upgrade_code">
<Package InstallerVersion="500" Compressed="yes" InstallScope="$whose" Description="KRXDialogs $version"
  Comments="Dialogs for operator panels" Manufacturer="Korvel" Languages="1033"/>
<MajorUpgrade DowngradeErrorMessage="A newer version of KRXDialogs is installed; remove it first."/>
<Media Id="1" Cabinet="krxdialogs.cab" EmbedCab="yes"/>
<Property Id="ARPCOMMENTS" Value="Dialogs for operator panels"/>
<Property Id="CLASSESSHARED"><RegistrySearch Id="NamesOfX86" Root="HKLM" Key="Software\Classes\.msi" Name="@"
  Type="raw" Win64="no"/></Property>
$(recall INSTALLDIR Folder)
$(recall HADDIALOGS Folder)
$(recall HADRUNTIME Runtime)
$(recall HADUSERSTOOL UsersTool)
$(recall HADHELP Help)
$(recall HADSAMPLES SamplesEntry)
<Directory Id="TARGETDIR" Name="SourceDir">
$(folders)
</Directory>
$(features)
</Product>
</Wix>
END
}
