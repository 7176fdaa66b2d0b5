#pragma once

#include <memory>

#include "base/String.h"
#include "ui/Property.h"

namespace krx::ui {

class Form;

enum class Kind {
  Timer,
  Index,
  Key,
  BoardKey,
  Label,
  TextBox,
  PasswordBox,
  ComboBox,
  RowList,
  Frame,
  PictureBox,
};

// The port's side of a component: usually a window. It follows the component's properties and
// reports what the operator does by raising the component's events. Its destructor touches its
// window only: the component may be gone by then.
class Peer {
 public:
  virtual ~Peer() = default;
  virtual void Update(Aspect aspect) = 0;
  virtual void SetFocus() {}
};

// A named part of a form. It works without a peer; a port gives it one while its form is shown.
class Component : public PropertyOwner {
 public:
  virtual ~Component();
  Component(const Component&) = delete;
  Component& operator=(const Component&) = delete;

  const String& Name() const { return name_; }
  ui::Kind Kind() const { return kind_; }
  Form& Parent() const { return parent_; }
  Peer* ThePeer() const { return peer_.get(); }

  void Changed(Aspect aspect) override;

 protected:
  Component(Form& parent, String name, ui::Kind kind);
  // Whether this component needs a peer while its form is shown; hidden controls get none.
  virtual bool WantsPeer() const { return true; }

 private:
  friend class Form;
  Form& parent_;
  const String name_;
  const ui::Kind kind_;
  std::unique_ptr<Peer> peer_;
};

}  // namespace krx::ui
