#pragma once

#include <memory>

#include "host/Runtime.h"

namespace krx::bench {

// A runtime that costs next to nothing: every key is its own text, one font serves all classes, and
// there are no users.
class BareRuntime : public host::Runtime {
 public:
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

 private:
  class Texts : public host::TextService {
   public:
    String GetText(StringView key, std::int32_t) override { return String(key); }
    String ResolveText(StringView text) override { return String(text); }
  };
  class Fonts : public host::FontService {
   public:
    void SelectFontClass(StringView) override {}
    Font GetFont() override { return {u"Tahoma", 8}; }
  };
};

}  // namespace krx::bench
