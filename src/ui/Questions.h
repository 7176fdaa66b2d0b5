#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "folders/FileSystem.h"
#include "ui/Timer.h"

namespace krx::ui {

// Questions to the file system that a part of a form has open. While the form is shown it hears
// each answer soon after it has come.
class Questions {
 public:
  template <class Answer>
  using Asked = std::unique_ptr<folders::Question<Answer>>;

  // `timer` is the name of the timer that looks for answers.
  Questions(Form& form, String timer);

  // Tells the answer: at once where it comes within `patience`, else later.
  template <class Answer>
  void Await(Asked<Answer> question, folders::Patience patience,
             std::function<void(const Answer&)> tell) {
    Look look = [held = std::shared_ptr(std::move(question)), tell = std::move(tell)](
                    folders::Patience wait) { return Telling(held->Take(wait), tell); };
    if (const std::function<void()> told = look(patience)) return told();
    Add(std::move(look));
  }
  // Asks once the form is shown, so that the question delays nothing before.
  template <class Answer>
  void AskWhenShown(std::function<Asked<Answer>()> ask, std::function<void(const Answer&)> tell) {
    Look look = [ask = std::move(ask), tell = std::move(tell),
                 held =
                     std::shared_ptr<folders::Question<Answer>>()](folders::Patience wait) mutable {
      if (!held) held = ask();
      return Telling(held->Take(wait), tell);
    };
    Add(std::move(look));
  }
  // Gives up all that is open.
  void Drop();

 private:
  // Looks for an answer; gives what tells it, or nothing while the question is open.
  using Look = std::function<std::function<void()>(folders::Patience)>;

  template <class Answer>
  static std::function<void()> Telling(std::optional<Answer> answer,
                                       const std::function<void(const Answer&)>& tell) {
    if (!answer) return {};
    return [tell, answer = std::move(*answer)] { tell(answer); };
  }

  void Add(Look look);
  void Tick();

  Timer timer_;
  std::vector<Look> open_;
  std::vector<std::function<void()>> came_;  // what tells answers that have come
};

}  // namespace krx::ui
