#pragma once

#include "service/Apartment.h"

namespace krx::users {

// Enters the user dialogs into the apartment's dialogs.
void Register(service::Apartment& apartment);

}  // namespace krx::users
