#include <functional>

#include "ComponentTest.h"

namespace krx::tests {
namespace {

struct Method {
  const char* Name;
  std::function<HRESULT(IKRXDialog&, BSTR*, VARIANT_BOOL*)> Call;
};

class NotImplementedTest : public ComponentTest, public ::testing::WithParamInterface<Method> {};

TEST_P(NotImplementedTest, SaysSoAndEmptiesTheResult) {
  const auto dialog = Module.Create();
  BSTR text = nullptr;
  VARIANT_BOOL done = VARIANT_TRUE;
  EXPECT_EQ(GetParam().Call(*dialog, &text, &done), E_NOTIMPL);
  EXPECT_EQ(text, nullptr);
  const ErrorTexts error = TakeError();
  EXPECT_EQ(error.Source, u"KRXDialogs");
  EXPECT_EQ(error.Description, u"This dialog is not implemented");
}

const Method kMethods[] = {
    {"KRSelectDirectoryTouch",
     [](IKRXDialog& d, BSTR* t, VARIANT_BOOL*) { return d.KRSelectDirectoryTouch({}, -1, {}, t); }},
    {"KROpenFileTouch", [](IKRXDialog& d, BSTR* t,
                           VARIANT_BOOL*) { return d.KROpenFileTouch({}, {}, {}, -1, {}, t); }},
};

INSTANTIATE_TEST_SUITE_P(Methods, NotImplementedTest, ::testing::ValuesIn(kMethods),
                         [](const auto& method) { return std::string(method.param.Name); });

}  // namespace
}  // namespace krx::tests
