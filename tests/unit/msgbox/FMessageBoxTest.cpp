#include <gtest/gtest.h>
#include "msgbox/FMessageBox.h"
#include "ports/headless/HeadlessPlatform.h"
#include "service/KRXDialog.h"
using namespace krx;
struct T : host::TextService {
  String GetText(StringView k, std::int32_t) override { return String(k); }
  String ResolveText(StringView k) override { return String(k); }
};
struct F : host::FontService {
  void SelectFontClass(StringView) override {}
  Font GetFont() override { return {u"x", 8}; }
};
struct R : host::Runtime {
  std::unique_ptr<host::TextService> CreateTextService() override { return std::make_unique<T>(); }
  std::unique_ptr<host::FontService> CreateFontService() override { return std::make_unique<F>(); }
};
TEST(FMessageBox, works) {
  headless::HeadlessPlatform p;
  R r;
  service::Apartment a(p, r);
  msgbox::Register(a);
  auto d = service::KRXDialog::Create(a);
  p.Expect(u"FMessageBox", [](headless::Operator& op) {
    EXPECT_EQ(op.Focus(), u"keyButton(0)");
    op.Press(13);
  });
  EXPECT_EQ(6, d->KRMsgBox(u"hi", 4, u"t"));
  EXPECT_TRUE(p.Complaints().empty());
}
