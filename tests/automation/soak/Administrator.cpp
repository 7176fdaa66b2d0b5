#include "soak/Administrator.h"

#include <stdexcept>
#include <string>

namespace krx::soak {

namespace {

constexpr const wchar_t* kName = L"admin";
constexpr const wchar_t* kPassword = L"Korvel-2026!";
constexpr long kLoggedOn = 2;

}  // namespace

Administrator::Administrator() {
  store_.Provision(kName, kPassword);
  CoCreateInstance(__uuidof(UserSession), nullptr, CLSCTX_INPROC_SERVER, __uuidof(IUserSession),
                   session_.PutVoid());
  long result = 0;
  if (!session_ ||
      session_->LogOnUser(client::BasicString(kName), client::BasicString(kPassword), &result) !=
          S_OK ||
      result != kLoggedOn)
    throw std::runtime_error("the administrator is not logged on: " + std::to_string(result));
}

}  // namespace krx::soak
