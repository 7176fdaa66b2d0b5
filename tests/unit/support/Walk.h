#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ports/headless/Operator.h"

namespace krx::test {

// A key that the operator presses, and the control that has the focus then.
struct Stroke {
  int Key;
  StringView Focus;
  int Shift = 0;
};

// Presses them one after the other.
inline void Walk(headless::Operator& op, const std::vector<Stroke>& strokes) {
  for (std::size_t i = 0; i < strokes.size(); ++i) {
    op.Press(strokes[i].Key, strokes[i].Shift);
    EXPECT_EQ(ToUtf8(op.Focus()), ToUtf8(strokes[i].Focus)) << "after stroke " << i;
  }
}

// The character code that a control leaves of a key press.
inline char16_t Left(headless::Operator& op, StringView control, char16_t key) {
  op.Get(control).KeyPress(key);
  return key;
}

// How tests with parameters are called: by the sentence that each row of a table begins with.
template <class Row>
std::string NameOfRow(const ::testing::TestParamInfo<Row>& info) {
  return info.param.Name;
}

}  // namespace krx::test
