#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "com/ComPtr.h"
#include "com/Errors.h"
#include "com/Text.h"

// What a method's body throws must reach the client as a status and a text, whatever it is.
namespace krx::tests {
namespace {

constexpr HRESULT kInternalError = static_cast<HRESULT>(0x800A0033);

String Described() {
  com::ComPtr<IErrorInfo> info;
  if (GetErrorInfo(0, info.Put()) != S_OK) return {};
  com::Bstr text;
  info->GetDescription(text.Put());
  return text.Text();
}

template <class Exception>
HRESULT StatusOf(Exception exception) {
  return com::Guard(IID_IDispatch, [&]() -> HRESULT { throw exception; });
}

TEST(GuardTest, LackOfMemoryKeepsItsStatus) {
  EXPECT_EQ(StatusOf(std::bad_alloc()), E_OUTOFMEMORY);
}

TEST(GuardTest, AForeignExceptionIsAnInternalErrorWithAText) {
  EXPECT_EQ(StatusOf(std::logic_error("a slip")), kInternalError);
  EXPECT_FALSE(Described().empty());
  EXPECT_EQ(StatusOf(42), kInternalError);
  EXPECT_FALSE(Described().empty());
}

TEST(GuardTest, AnErrorOfTheDialogsKeepsStatusAndText) {
  EXPECT_EQ(StatusOf(TypeMismatch()), static_cast<HRESULT>(0x800A000D));
  EXPECT_EQ(Described(), TypeMismatch().Description());
}

TEST(GuardTest, SuccessPassesUnchanged) {
  EXPECT_EQ(com::Guard(IID_IDispatch, [] { return S_FALSE; }), S_FALSE);
}

}  // namespace
}  // namespace krx::tests
