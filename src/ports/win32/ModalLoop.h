#pragma once

#include <optional>
#include <vector>

#include "ports/win32/FormPeer.h"
#include "ports/win32/Stacking.h"

namespace krx::win32 {

// The one modal loop of this port. While it lives, the thread's other windows take no input; when
// it ends they are as they were, and so are activation and focus.
class ModalLoop {
 public:
  ModalLoop(Toolkit& toolkit, FormPeer& peer);
  ~ModalLoop();
  ModalLoop(const ModalLoop&) = delete;
  ModalLoop& operator=(const ModalLoop&) = delete;

  // Shows the form and returns when it is hidden, failed, or the thread is to end.
  void Run();

  FormPeer& Peer() const { return peer_; }

  // Handles one message of the thread, with the keyboard of the innermost form.
  static void Dispatch(Toolkit& toolkit, MSG& message);
  // The form was hidden: it leaves the screen at once, its loop ends when it gets its turn.
  static void Hidden(Toolkit& toolkit, FormPeer& peer);
  // Lets the form's loop look at the form's state again.
  static void Wake(Toolkit& toolkit, const FormPeer& peer);

 private:
  bool Goes() const;
  void DisableOthers();
  void EnableOthers();
  // Gives the host back what the form took, and what outer forms took that went before it.
  void Close();
  bool RestoreActivation() const;

  Toolkit& toolkit_;
  FormPeer& peer_;
  const HWND active_before_;
  const HWND focus_before_;
  std::vector<HWND> disabled_;  // by us, and only these are enabled again
  std::optional<Stacking> stacking_;
  std::optional<int> quit_;  // exit code of a quit message that the loop took from the queue
  bool waiting_ = false;
  bool closed_ = false;
};

}  // namespace krx::win32
