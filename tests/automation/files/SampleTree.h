#pragma once

#include "FolderTree.h"

namespace krx::test {

// Alpha\, Logs\Old\ with today.log in Logs, Zeta\, and in itself notes.txt, plan.bmp, readme.txt.
class SampleTree : public FolderTree {
 public:
  SampleTree() {
    for (const StringView folder : {u"Alpha", u"Logs", u"Logs\\Old", u"Zeta"})
      AddFolder(folder);
    for (const StringView file : {u"notes.txt", u"plan.bmp", u"readme.txt", u"Logs\\today.log"})
      AddFile(file);
  }
};

}  // namespace krx::test
