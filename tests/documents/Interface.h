#pragma once

#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace krx::tests {

// A parameter as the reference tells of it.
struct Parameter {
  std::string Name;
  std::string Type;     // String, Long, Single, Boolean, Object
  std::string Default;  // empty for one that is required
  bool operator==(const Parameter&) const = default;
};
// As a failing test shows it.
void PrintTo(const Parameter& parameter, std::ostream* out);

// A property or method of the component, read from its interface description.
struct Member {
  std::string Name;
  int Id = 0;
  int HelpContext = 0;
  bool IsProperty = false;
  std::vector<Parameter> Parameters;
  std::string Result;  // a type; empty for none. The type of a property.

  std::size_t Required() const;
};
inline void PrintTo(const Member& member, std::ostream* out) {
  *out << member.Name;
}

// Members in the order of the interface; a property stands once, though it is read and written.
std::vector<Member> Members(const std::string& description);

// The results of message boxes: names and values, and the context of all of them.
struct Enumeration {
  std::string Name;
  int HelpContext = 0;
  std::vector<std::pair<std::string, std::string>> Values;
};
Enumeration ReadEnumeration(const std::string& description);

}  // namespace krx::tests
