#include "driver/Resolution.h"

#include <ranges>
#include <stdexcept>

namespace krx::drive {

namespace {

constexpr const wchar_t* kDesktop = L"Control Panel\\Desktop";

// Where the settings of every screen stand, below the current configuration of the machine.
std::vector<std::wstring> Screens() {
  const std::wstring machine = L"\\Registry\\Machine\\";
  std::vector<std::wstring> keys;
  DISPLAY_DEVICEW device{};
  device.cb = sizeof device;
  for (DWORD i = 0; EnumDisplayDevicesW(nullptr, i, &device, 0); ++i) {
    const std::wstring key = device.DeviceKey;
    if (key.size() > machine.size()) keys.push_back(key.substr(machine.size()));
  }
  return keys;
}

}  // namespace

Resolution::Resolution(DWORD desktop, DWORD screens) {
  Set(HKEY_CURRENT_USER, kDesktop, L"LogPixels", desktop);
  for (const std::wstring& screen : Screens())
    Set(HKEY_CURRENT_CONFIG, screen, L"Dpi", screens);
}

Resolution::~Resolution() {
  for (const Setting& setting : settings_ | std::views::reverse) {
    if (setting.Present) {
      RegSetKeyValueW(setting.Root, setting.Key.c_str(), setting.Name.c_str(), REG_DWORD,
                      &setting.Before, sizeof setting.Before);
    } else {
      RegDeleteKeyValueW(setting.Root, setting.Key.c_str(), setting.Name.c_str());
    }
  }
}

void Resolution::Set(HKEY root, const std::wstring& key, const wchar_t* name, DWORD value) {
  Setting setting{root, key, name};
  DWORD size = sizeof setting.Before;
  setting.Present = RegGetValueW(root, key.c_str(), name, RRF_RT_REG_DWORD, nullptr,
                                 &setting.Before, &size) == ERROR_SUCCESS;
  settings_.push_back(setting);
  if (RegSetKeyValueW(root, key.c_str(), name, REG_DWORD, &value, sizeof value) != ERROR_SUCCESS)
    throw std::runtime_error("the resolution cannot be set");
}

}  // namespace krx::drive
