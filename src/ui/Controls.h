#pragma once

#include "ui/EditBoxes.h"
#include "ui/KRXComboBox.h"
#include "ui/KRXIndex.h"
#include "ui/KRXKey.h"
#include "ui/StandardControls.h"
