# shellcheck shell=bash
# What the components register, as lines of an installer's source; sourced by `msi`. The tests of the installer
# compare it with what the components themselves write.

# COMPONENT LIBRARY NAME
libraries=(
  'Dialogs|{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C3001}| KorvelSuite KRXDialogs'
  'Runtime|{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C1001}|Korvel Runtime services'
)
# COMPONENT CLASS PROGID DESCRIPTION
classes=(
  'Dialogs|{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C3020}|KRXDialogs.KRXDialog|KorvelSuite KRXDialogs'
  'Runtime|{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C2010}|KorvelRuntime.TextService|Korvel Runtime language texts'
  'Runtime|{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C2020}|KorvelRuntime.FontService|Korvel Runtime font classes'
  'Runtime|{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C2030}|KorvelRuntime.RuntimeSettings|Korvel Runtime settings'
  'Runtime|{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C2070}|KorvelRuntime.PanelSettings|Korvel Runtime panel settings'
  'Runtime|{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C2040}|KorvelRuntime.UserSession|Korvel Runtime log-on'
  'Runtime|{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C2050}|KorvelRuntime.UserAdministration|Korvel Runtime users'
  'Runtime|{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C2060}|KorvelRuntime.UserClassAdministration|Korvel Runtime user classes'
)
# COMPONENT INTERFACE NAME
interfaces=(
  'Dialogs|{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C3010}|IKRXDialog'
  'Runtime|{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C1010}|ITextService'
  'Runtime|{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C1020}|IFontService'
  'Runtime|{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C1030}|IRuntimeSettings'
  'Runtime|{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C1070}|IPanelSettings'
  'Runtime|{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C1040}|IUserSession'
  'Runtime|{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C1050}|IUserAdministration'
  'Runtime|{6B1C0A52-3D1E-4C57-9B7E-5A0E2F3C1060}|IUserClassAdministration'
)
marshaler='{00020424-0000-0000-C000-000000000046}' # the system's own, which follows the type library

# value KEY VALUE [NAME]: one value below the classes of the machine or of the user, by the kind of package.
value() {
  printf '<RegistryValue Root="HKMU" Key="Software\\Classes\\%s"%s Type="string" Value="%s"/>\n' \
    "$1" "${3:+ Name=\"$3\"}" "$2"
}

# library_of COMPONENT: the identifier and the name of its type library, in $library and $library_name.
library_of() {
  local component
  for line in "${libraries[@]}"; do
    IFS='|' read -r component library library_name <<< "$line"
    [[ $component != "$1" ]] || return 0
  done
  return 1
}

# class_values COMPONENT FILE WINDOWS: its classes, and where its type library for win32 or win64 lies.
class_values() {
  local line component id prog_id description key
  library_of "$1"
  for line in "${classes[@]}"; do
    IFS='|' read -r component id prog_id description <<< "$line"
    [[ $component == "$1" ]] || continue
    key="CLSID\\$id"
    value "$key" "$description"
    value "$key\\InprocServer32" "[#$2]"
    value "$key\\InprocServer32" Apartment ThreadingModel
    value "$key\\ProgID" "$prog_id.1"
    value "$key\\VersionIndependentProgID" "$prog_id"
    value "$key\\TypeLib" "$library"
    value "$key\\Version" 1.0
    value "$key\\Programmable" '' '*'
  done
  value "TypeLib\\$library\\1.0\\0\\$3" "[#$2]"
}

# name_values COMPONENT: the names of its classes.
name_values() {
  local line component id prog_id description name
  for line in "${classes[@]}"; do
    IFS='|' read -r component id prog_id description <<< "$line"
    [[ $component == "$1" ]] || continue
    for name in "$prog_id" "$prog_id.1"; do
      value "$name" "$description"
      value "$name\\CLSID" "$id"
    done
    value "$prog_id\\CurVer" "$prog_id.1"
  done
}

# library_values COMPONENT: what its type library is, wherever it lies.
library_values() {
  library_of "$1"
  value "TypeLib\\$library\\1.0" "$library_name"
  value "TypeLib\\$library\\1.0\\FLAGS" 8 # it lies on a disk
  value "TypeLib\\$library\\1.0\\HELPDIR" '[INSTALLDIR]'
}

# interface_values COMPONENT
interface_values() {
  local line component id name key
  library_of "$1"
  for line in "${interfaces[@]}"; do
    IFS='|' read -r component id name <<< "$line"
    [[ $component == "$1" ]] || continue
    key="Interface\\$id"
    value "$key" "$name"
    value "$key\\ProxyStubClsid" "$marshaler"
    value "$key\\ProxyStubClsid32" "$marshaler"
    value "$key\\TypeLib" "$library"
    value "$key\\TypeLib" 1.0 Version
  done
}
