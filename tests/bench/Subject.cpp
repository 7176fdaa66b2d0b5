#include "Subject.h"

#include <stdexcept>
#include <utility>

#include "Times.h"
#include "UserCalls.h"

namespace krx::bench {

namespace {

Call Opening(client::Dialogs& dialogs, const Method& method) {
  return [&dialogs, open = method.Open, name = method.Name] {
    if (open(*dialogs.operator->()) != S_OK) throw std::runtime_error(name + " fails");
  };
}

Subject Own(client::Dialogs& dialogs, const Method& method, std::unique_ptr<Twin>& twin) {
  const Call call = Opening(dialogs, method);
  Acquaintance known = GetToKnow(call, [&](HWND dialog) { twin = std::make_unique<Twin>(dialog); });
  if (known.MostRows() < method.FewestRows)
    throw std::runtime_error(method.Name + " shows " + std::to_string(known.MostRows()) + " rows");
  return {method.Name, call, std::move(known)};
}

}  // namespace

Showing Subject::Once() const {
  const Showing showing = Measure(call_, known_);
  if (showing.Painted == 0) throw std::runtime_error(name_ + " was never seen painted");
  return showing;
}

void Subject::Run() {
  const Showing showing = Once();
  painted_.push_back(showing.Painted);
  returned_.push_back(showing.Returned);
}

void Subject::Forget() {
  painted_.clear();
  returned_.clear();
}

double Subject::Painted() const {
  return Median(painted_);
}

double Subject::RoundTrip() const {
  return Median(returned_);
}

Dialog::Dialog(client::Dialogs& dialogs, const Method& method)
    : OfUsers(method.Kind == Method::Of::Users),
      Own(bench::Own(dialogs, method, Likeness)),
      Bare(method.Name + "'s twin", [twin = Likeness.get()] { twin->Show(); }) {}

void Dialog::RunTimed() {
  if (!OfUsers) return;
  const UserCalls calls;
  Own.Once();
  users_.push_back(calls.Milliseconds());
}

void Dialog::Forget() {
  Own.Forget();
  Bare.Forget();
  users_.clear();
}

double Dialog::Users() const {
  return OfUsers ? Median(users_) : 0;
}

}  // namespace krx::bench
