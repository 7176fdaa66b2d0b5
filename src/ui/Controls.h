#pragma once

#include "ui/KRXIndex.h"
#include "ui/KRXKey.h"
#include "ui/StandardControls.h"
