#pragma once

namespace krx::test {

// How many graphics objects this process holds. The counting functions of the system are not
// everywhere, so the table of all objects is read.
int GdiObjects();

}  // namespace krx::test
