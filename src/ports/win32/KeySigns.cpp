#include "ports/win32/KeySigns.h"

#include <algorithm>
#include <vector>

namespace krx::win32 {

namespace {

constexpr int kGrid = 16;  // signs are drawn on a square of so many steps
constexpr int kThirds = 3;

// A line through points of the grid; closed ones are outlines.
struct Stroke {
  std::vector<POINT> Points;
};
using Strokes = std::vector<Stroke>;

Strokes StrokesOf(ui::KeySign sign) {
  switch (sign) {
    case ui::KeySign::Shift:
      return {{{{8, 2}, {14, 8}, {11, 8}, {11, 14}, {5, 14}, {5, 8}, {2, 8}, {8, 2}}}};
    case ui::KeySign::CapsLock:
      return {{{{8, 1}, {14, 7}, {11, 7}, {11, 11}, {5, 11}, {5, 7}, {2, 7}, {8, 1}}},
              {{{4, 14}, {12, 14}}}};
    case ui::KeySign::Backspace:
      return {{{{1, 8}, {5, 3}, {15, 3}, {15, 13}, {5, 13}, {1, 8}}},
              {{{7, 6}, {12, 11}}},
              {{{12, 6}, {7, 11}}}};
    case ui::KeySign::Delete:
      return {{{{15, 8}, {11, 3}, {1, 3}, {1, 13}, {11, 13}, {15, 8}}},
              {{{4, 6}, {9, 11}}},
              {{{9, 6}, {4, 11}}}};
    case ui::KeySign::Enter:
      return {{{{14, 3}, {14, 9}, {2, 9}}}, {{{6, 5}, {2, 9}, {6, 13}}}};
    case ui::KeySign::Tab:
      return {{{{1, 8}, {12, 8}}}, {{{8, 4}, {12, 8}, {8, 12}}}, {{{15, 3}, {15, 13}}}};
    case ui::KeySign::Left:
      return {{{{14, 8}, {2, 8}}}, {{{7, 3}, {2, 8}, {7, 13}}}};
    case ui::KeySign::Right:
      return {{{{2, 8}, {14, 8}}}, {{{9, 3}, {14, 8}, {9, 13}}}};
    case ui::KeySign::Up:
      return {{{{8, 14}, {8, 2}}}, {{{3, 7}, {8, 2}, {13, 7}}}};
    case ui::KeySign::Down:
      return {{{{8, 2}, {8, 14}}}, {{{3, 9}, {8, 14}, {13, 9}}}};
    case ui::KeySign::Home:
      return {{{{15, 8}, {4, 8}}}, {{{8, 4}, {4, 8}, {8, 12}}}, {{{1, 3}, {1, 13}}}};
    case ui::KeySign::End:
      return {{{{1, 8}, {12, 8}}}, {{{8, 4}, {12, 8}, {8, 12}}}, {{{15, 3}, {15, 13}}}};
    case ui::KeySign::Hide:
      return {{{{1, 2}, {15, 2}, {15, 9}, {1, 9}, {1, 2}}},
              {{{5, 6}, {11, 6}}},
              {{{5, 12}, {8, 15}, {11, 12}}}};
    case ui::KeySign::None:
      break;
  }
  return {};
}

}  // namespace

void DrawKeySign(HDC dc, const RECT& area, ui::KeySign sign, COLORREF color) {
  const int room = std::min<int>(area.right - area.left, area.bottom - area.top);
  const int size = room * 2 / kThirds;
  const int left = (area.left + area.right - size) / 2;
  const int top = (area.top + area.bottom - size) / 2;
  LOGBRUSH ink{BS_SOLID, color, 0};
  const HPEN pen = ExtCreatePen(PS_GEOMETRIC | PS_SOLID | PS_ENDCAP_ROUND | PS_JOIN_ROUND,
                                static_cast<DWORD>(std::max(1, size / 11)), &ink, 0, nullptr);
  if (!pen) return;
  const HGDIOBJ before = SelectObject(dc, pen);
  for (const Stroke& stroke : StrokesOf(sign)) {
    std::vector<POINT> points = stroke.Points;
    for (POINT& point : points)
      point = {left + MulDiv(point.x, size, kGrid), top + MulDiv(point.y, size, kGrid)};
    Polyline(dc, points.data(), static_cast<int>(points.size()));
  }
  SelectObject(dc, before);
  DeleteObject(pen);
}

}  // namespace krx::win32
