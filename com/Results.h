#pragma once

#include "com/Errors.h"

namespace krx::com {

// Where a method's results go: emptied first; refused when the client gives no place for one.
template <class... Values>
void EmptyResults(Values*... places) {
  if (!(places && ...)) Refuse(E_POINTER);
  ((*places = Values{}), ...);
}

// Gives the client what `body` returns; without a place for it, nothing is done.
template <class Value, class Body>
void Answer(Value* place, Body&& body) {
  EmptyResults(place);
  *place = body();
}

}  // namespace krx::com
