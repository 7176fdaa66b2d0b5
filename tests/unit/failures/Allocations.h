#pragma once

namespace krx::test {

// The allocations of this program, whose operators new and delete are replaced: counted, and failed
// one by one.
class Allocations {
 public:
  // From now on they are counted anew; the n-th fails, once or with all that follow. 0: none.
  static void Fail(long n, bool for_good);
  // From now on none fails; tells how many have been made since.
  static long Stop();
  // Whether one has failed since.
  static bool Failed();
  // Blocks that are in use.
  static long Live();
};

}  // namespace krx::test
