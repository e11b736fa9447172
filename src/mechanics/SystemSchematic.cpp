#include "mechanics/SystemSchematic.h"

#include "project/data/MachineUnits.h"
#include "session/Project.h"

namespace velmoor {
namespace {

using Kind = DrawingShape::Kind;

class Sheet {
 public:
  void Line(double x1, double y1, double x2, double y2) { Add(Kind::line, x1, y1, x2, y2); }
  void Box(double x1, double y1, double x2, double y2) { Add(Kind::rectangle, x1, y1, x2, y2); }
  void Circle(double x, double y, double r) { Add(Kind::ellipse, x - r, y - r, x + r, y + r); }
  // A measure that the user gives: a double arrow with its words.
  void Measure(double x1, double y1, double x2, double y2, const std::string& words, double textX,
               double textY) {
    const double mx = (x1 + x2) / 2, my = (y1 + y2) / 2;
    Add(Kind::arrow, mx, my, x1, y1, true);
    Add(Kind::arrow, mx, my, x2, y2, true);
    Text(textX, textY, words, true);
  }
  void Arrow(double x1, double y1, double x2, double y2) { Add(Kind::arrow, x1, y1, x2, y2); }
  void Text(double x, double y, const std::string& words, bool strong = false) {
    shapes_.push_back({Kind::text, x, y, x, y, words, strong});
  }
  std::vector<DrawingShape> Take() { return std::move(shapes_); }

 private:
  void Add(Kind kind, double x1, double y1, double x2, double y2, bool strong = false) {
    shapes_.push_back({kind, x1, y1, x2, y2, {}, strong});
  }
  std::vector<DrawingShape> shapes_;
};

// The motor below on the left turns N2 times while the load's shaft above turns N1 times.
void DrawMotorAndGear(Sheet& sheet, const SchematicTexts& texts) {
  sheet.Box(14, 118, 74, 158);
  sheet.Text(44, 138, "Motor");
  sheet.Text(44, 108, texts.encoder, true);
  sheet.Line(74, 138, 100, 138);
  sheet.Box(100, 122, 112, 154);
  sheet.Box(100, 52, 112, 122);
  sheet.Line(112, 87, 140, 87);
  sheet.Text(106, 168, texts.n2, true);
  sheet.Text(106, 40, texts.n1, true);
}

void DrawLeadscrew(Sheet& sheet, const std::string& measure) {
  sheet.Box(140, 80, 340, 94);
  for (int i = 0; i < 20; ++i) {
    sheet.Line(140 + i * 10.0, 94, 150 + i * 10.0, 80);
  }
  sheet.Box(215, 66, 265, 108);
  sheet.Text(240, 56, "Load");
  sheet.Line(290, 96, 290, 130);
  sheet.Line(310, 96, 310, 130);
  sheet.Measure(290, 122, 310, 122, measure, 270, 144);
}

void DrawBelt(Sheet& sheet, const std::string& measure) {
  sheet.Circle(170, 87, 30);
  sheet.Circle(310, 87, 30);
  sheet.Line(170, 57, 310, 57);
  sheet.Line(170, 117, 310, 117);
  sheet.Box(215, 40, 265, 57);
  sheet.Text(240, 30, "Load");
  sheet.Arrow(250, 130, 300, 130);
  sheet.Measure(170, 57, 170, 117, measure, 240, 150);
}

void DrawFeeder(Sheet& sheet, const std::string& measure) {
  sheet.Circle(190, 62, 25);
  sheet.Circle(190, 116, 29);
  sheet.Line(130, 87, 340, 87);
  sheet.Arrow(290, 78, 335, 78);
  sheet.Text(300, 66, "Material");
  sheet.Measure(190, 87, 190, 145, measure, 245, 162);
}

void DrawTable(Sheet& sheet, const std::string& measure) {
  sheet.Line(140, 87, 188, 87);
  sheet.Circle(250, 87, 62);
  sheet.Circle(250, 87, 8);
  sheet.Line(250, 87, 312, 87);
  sheet.Line(250, 87, 294, 43);
  sheet.Arrow(306, 60, 296, 46);
  sheet.Text(250, 166, measure, true);
}

void DrawOther(Sheet& sheet, const std::string& measure) {
  sheet.Box(140, 60, 340, 114);
  sheet.Text(240, 87, "Machine");
  sheet.Text(240, 134, measure, true);
}

}  // namespace

std::vector<DrawingShape> SystemSchematic(std::int32_t system, const SchematicTexts& texts) {
  Sheet sheet;
  DrawMotorAndGear(sheet, texts);
  switch (system) {
    case 0:
      DrawLeadscrew(sheet, texts.measure);
      break;
    case 1:
      DrawBelt(sheet, texts.measure);
      break;
    case 2:
      DrawFeeder(sheet, texts.measure);
      break;
    case kRotaryTable:
      DrawTable(sheet, texts.measure);
      break;
    case 4:
      DrawOther(sheet, texts.measure);
      break;
    default:
      break;
  }
  return sheet.Take();
}

}  // namespace velmoor
