#pragma once

#include <memory>

#include "base/Error.h"
#include "host/Runtime.h"

namespace krx::fuzz {

// A runtime whose texts are their keys; it has no users.
struct Texts : host::TextService {
  String GetText(StringView key, std::int32_t) override { return String(key); }
  String ResolveText(StringView reference) override {
    if (reference.size() % 2 == 0) throw RuntimeError(5, u"No such text");
    return String(reference.substr(1));
  }
};

struct Fonts : host::FontService {
  void SelectFontClass(StringView name) override {
    Selected.Size = name == u"large" ? 30.0f : 8.0f;
  }
  Font GetFont() override { return Selected; }

  Font Selected;
};

struct Plant : host::Runtime {
  std::unique_ptr<host::TextService> CreateTextService() override {
    return std::make_unique<Texts>();
  }
  std::unique_ptr<host::FontService> CreateFontService() override {
    return std::make_unique<Fonts>();
  }
  std::unique_ptr<host::UserSession> CreateUserSession() override { return nullptr; }
  std::unique_ptr<host::UserAdministration> CreateUserAdministration() override { return nullptr; }
  std::unique_ptr<host::UserClassAdministration> CreateUserClassAdministration() override {
    return nullptr;
  }
};

}  // namespace krx::fuzz
