#pragma once

#include <windows.h>

#include <string>

namespace krx::test {

// What the tests run on.
struct Platform {
  int Wine = 0;  // its major version; 0 where there is none
  int Bits = 0;  // width of this process

  std::string Name() const;
};

const Platform& ThisPlatform();

// Whether EM_GETLINE may be sent to an edit control. Wine takes the length of its answer to another
// process from the word in front of the buffer, and ends the thread that answers when that is too
// much.
bool MayAskForLine(HWND edit);

// A behaviour of some platform that no other shows. It has to hold there and nowhere else: a test
// names what it expects on either side, so that it fails as soon as one of them changes.
struct Difference {
  const char* Where;
  bool (*Holds)(const Platform&);
  const char* Reason;
};

// `there` on the platform of the difference, `elsewhere` on all others.
template <class T>
T Expected(const Difference& difference, T there, T elsewhere) {
  return difference.Holds(ThisPlatform()) ? there : elsewhere;
}

}  // namespace krx::test
