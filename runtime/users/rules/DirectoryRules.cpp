#include "runtime/users/rules/DirectoryRules.h"

#include <algorithm>

namespace krx::runtime {
namespace {

constexpr std::int32_t kEncryptedPort = 636;
constexpr std::int32_t kPlainPort = 389;

// 127.0.0.1 to 127.255.255.254, and nothing that merely begins so: 127.example.org is a name.
bool IsLoopbackAddress(StringView host) {
  return host.starts_with(u"127.") && std::count(host.begin(), host.end(), u'.') == 3 &&
         std::all_of(host.begin(), host.end(),
                     [](char16_t unit) { return unit == u'.' || (unit >= u'0' && unit <= u'9'); });
}

}  // namespace

bool DirectoryServer::IsThisMachine() const {
  return AsciiLower(Host) == u"localhost" || Host == u"::1" || IsLoopbackAddress(Host);
}

String DirectoryServer::Address() const {
  const bool is_number = Host.find(u':') != Host.npos;
  String address = Encrypted ? u"ldaps://" : u"ldap://";
  address += is_number ? u"[" + Host + u"]" : Host;
  if (Port != (Encrypted ? kEncryptedPort : kPlainPort)) address += u":" + ToString(Port);
  return address;
}

}  // namespace krx::runtime
