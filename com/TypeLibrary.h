#pragma once

#include <ole2.h>

#include "com/ComPtr.h"

namespace krx::com {

// The type library that the module itself carries as a resource; nothing is looked up in the
// registry. Raises Error.
ComPtr<ITypeLib> LoadModuleTypeLibrary();

// Description of one of the module's interfaces, loaded once and kept for the whole process until
// ForgetTypeDescriptions. Raises Error. May be called from any thread.
ComPtr<ITypeInfo> TypeDescription(REFIID iid);

// Gives the kept descriptions back, so that nothing stays behind when the module is unloaded.
void ForgetTypeDescriptions() noexcept;

}  // namespace krx::com
