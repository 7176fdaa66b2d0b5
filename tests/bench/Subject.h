#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Calls.h"
#include "Showing.h"
#include "Twin.h"

namespace krx::bench {

// A dialog that is measured again and again, by turns with others.
class Subject {
 public:
  Subject(std::string name, Call call) : name_(std::move(name)), call_(std::move(call)) {}
  Subject(std::string name, Call call, Acquaintance known)
      : name_(std::move(name)), call_(std::move(call)), known_(std::move(known)) {}

  const std::string& Name() const { return name_; }
  // Throws when it was never seen painted.
  Showing Once() const;
  void Run();
  // What was measured up to now does not count.
  void Forget();

  double Painted() const;
  double RoundTrip() const;

 private:
  std::string name_;
  Call call_;
  Acquaintance known_;
  std::vector<double> painted_;
  std::vector<double> returned_;
};

// One of our dialogs, its bare twin, and what the user management takes in it.
struct Dialog {
  // Opens the dialog once to see what it is like; throws where it lacks rows.
  Dialog(client::Dialogs& dialogs, const Method& method);

  bool OfUsers;
  std::unique_ptr<Twin> Likeness;  // lies still in memory, for its windows point to it
  Subject Own;
  Subject Bare;

  void RunTimed();
  void Forget();
  double Users() const;  // milliseconds in the user management; 0 for the other dialogs

 private:
  std::vector<double> users_;
};

}  // namespace krx::bench
