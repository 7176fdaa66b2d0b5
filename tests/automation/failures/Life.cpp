#include "failures/Life.h"

#include "com/Errors.h"
#include "driver/Window.h"
#include "failures/Answers.h"
#include "failures/FailingCalls.h"
#include "soak/Forms.h"

namespace krx::failures {

namespace {

constexpr UINT kTick = 10;  // milliseconds between two looks of the operator

using Object = com::ComPtr<IKRXDialog>;

HRESULT Create(Object& object) {
  return CoCreateInstance(__uuidof(KRXDialog), nullptr, CLSCTX_INPROC_SERVER, __uuidof(IKRXDialog),
                          object.PutVoid());
}

// A status without words of its own has those of the system.
Outcome Open(Object& object, const client::Method& method) {
  const client::Selection selection{client::BasicString(L"C:\\windows"), VARIANT_TRUE};
  std::wstring words;
  TakeSeen();
  HRESULT status = object ? S_OK : Create(object);
  if (SUCCEEDED(status)) status = method.Open(*object.Get(), selection, words);
  Outcome outcome{status, {}, TakeSeen()};
  if (FAILED(status))
    outcome.Words = words.empty() ? ToUtf8(com::SystemMessage(status)) : drive::Narrow(words);
  return outcome;
}

}  // namespace

Life::Life(const client::Method& method, long n, bool for_good) {
  const client::Automation automation;
  const soak::Answering answering(GiveUp, kTick);
  Object object;
  FailingCalls::Fail(n, for_good);
  First = Open(object, method);
  Calls = FailingCalls::Stop();
  soak::HandlePending();
  Next = Open(object, method);
}

}  // namespace krx::failures
