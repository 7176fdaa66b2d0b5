// What tools/mutate puts at the head of a file whose changes it has compiled in all at once.
#pragma once

namespace krx::mutants {

// The changes of one file. The one that the environment's KRX_MUTANT names, as FILE:NUMBER, is
// switched on.
class File {
 public:
  File(const char* name, int count, bool* reached, int* chosen);

  const char* const Name;
  const int Count;
  bool* const Reached;  // by number: whether the code there has been run
  const File* const Next;
};

// The last that was made; the others follow.
const File*& Files();

}  // namespace krx::mutants
