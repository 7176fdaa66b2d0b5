#pragma once

#include <ole2.h>

#include "base/Font.h"
#include "com/ComPtr.h"

namespace krx::automation {

// What a font object of the platform describes. Runtime error 91 when there is none, a type
// mismatch when the object is no font, else the failure of the object.
Font ReadFont(const com::ComPtr<IUnknown>& object);

}  // namespace krx::automation
