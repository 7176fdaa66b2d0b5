#pragma once

#include "ui/ComboBox.h"
#include "ui/EditBoxes.h"
#include "ui/KRXIndex.h"
#include "ui/KRXKey.h"
#include "ui/RowList.h"
#include "ui/StandardControls.h"
