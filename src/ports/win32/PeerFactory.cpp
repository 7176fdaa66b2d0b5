#include "ports/win32/PeerFactory.h"

#include "ports/win32/BoardKeyPeer.h"
#include "ports/win32/ComboPeer.h"
#include "ports/win32/EditPeers.h"
#include "ports/win32/KeyPeer.h"
#include "ports/win32/ListPeer.h"
#include "ports/win32/PanePeers.h"
#include "ports/win32/PasswordBoxPeer.h"
#include "ports/win32/StandardPeers.h"
#include "ports/win32/TimerPeer.h"

namespace krx::win32 {

std::unique_ptr<FormPeer> MakePeer(Toolkit& toolkit, ui::Form& form) {
  return std::make_unique<FormPeer>(toolkit, form);
}

std::unique_ptr<ui::Peer> MakePeer(Toolkit& toolkit, FormPeer& form, ui::Component& component) {
  switch (component.Kind()) {
    case ui::Kind::Timer:
      return std::make_unique<TimerPeer>(form, static_cast<ui::Timer&>(component));
    case ui::Kind::Index:
      return std::make_unique<IndexPeer>(toolkit, form, static_cast<ui::KRXIndex&>(component));
    case ui::Kind::Key:
      return std::make_unique<KeyPeer>(toolkit, form, static_cast<ui::KRXKey&>(component));
    case ui::Kind::BoardKey:
      return std::make_unique<BoardKeyPeer>(toolkit, form, static_cast<ui::BoardKey&>(component));
    case ui::Kind::Label:
      return std::make_unique<LabelPeer>(toolkit, form, static_cast<ui::Label&>(component));
    case ui::Kind::TextBox:
      return std::make_unique<TextBoxPeer>(toolkit, form, static_cast<ui::TextBox&>(component));
    case ui::Kind::PasswordBox:
      return std::make_unique<PasswordBoxPeer>(toolkit, form,
                                               static_cast<ui::PasswordBox&>(component));
    case ui::Kind::ComboBox:
      return std::make_unique<ComboPeer>(toolkit, form, static_cast<ui::ComboBox&>(component));
    case ui::Kind::RowList:
      return std::make_unique<ListPeer>(toolkit, form, static_cast<ui::RowList&>(component));
    case ui::Kind::Frame:
      return std::make_unique<FramePeer>(toolkit, form, static_cast<ui::Frame&>(component));
    case ui::Kind::PictureBox:
      return std::make_unique<PicturePeer>(toolkit, form, static_cast<ui::PictureBox&>(component));
  }
  return nullptr;
}

}  // namespace krx::win32
