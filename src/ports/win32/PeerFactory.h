#pragma once

#include <memory>

#include "ports/win32/FormPeer.h"

namespace krx::win32 {

// The peers of this port, by the kind of their component.
std::unique_ptr<FormPeer> MakePeer(Toolkit& toolkit, ui::Form& form);
std::unique_ptr<ui::Peer> MakePeer(Toolkit& toolkit, FormPeer& form, ui::Component& component);

}  // namespace krx::win32
