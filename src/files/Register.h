#pragma once

#include "service/Apartment.h"

namespace krx::files {

// Enters the selection dialogs into the apartment's dialogs.
void Register(service::Apartment& apartment);

}  // namespace krx::files
