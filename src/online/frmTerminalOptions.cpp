#include "online/frmTerminalOptions.h"

#include "platform/AppearanceDialogs.h"
#include "platform/Numbers.h"
#include "platform/World.h"

namespace velmoor {

void frmTerminalOptions::FormLoad() {
  connections_ += form().button("cmdFont").Click.Connect([this] { cmdFont_Click(); });
  struct ColorButton {
    const char* name;
    const char* title;
    std::string TerminalAppearance::*color;
  };
  static constexpr ColorButton kColorButtons[] = {
      {"cmdForeColor", "Text Color", &TerminalAppearance::ColorFont},
      {"cmdBoldColor", "Bold Text Color", &TerminalAppearance::ColorBold},
      {"cmdBackColor", "Background Color", &TerminalAppearance::ColorBG}};
  for (const ColorButton& button : kColorButtons) {
    connections_ += form().button(button.name).Click.Connect([this, &button] {
      ChooseColor(button.title, button.color);
    });
  }
  connections_ += form().button("cmdOK").Click.Connect([this] {
    accepted_ = true;
    Unload();
  });
  connections_ += form().button("cmdCancel").Click.Connect([this] { Unload(); });
  TerminalScreen& sample = form().terminalScreen("VtSample");
  sample.MoveCursor(sample.Rows() - 2, 1);
  sample.Write("0PRM800");
  sample.MoveCursor(sample.Rows() - 1, 1);
  sample.Write("> 0PN800=00000001");
  sample.MoveCursor(sample.Rows(), 1);
  sample.SetBold(true);
  sample.Write("> *** ERROR ***");
  ShowSample();
}

void frmTerminalOptions::cmdFont_Click() {
  const auto token = Token();
  const auto font = world().appearance->ChooseFont({appearance_.NameFont, appearance_.SizeFont});
  if (!font || token.expired()) return;
  appearance_.NameFont = font->name;
  appearance_.SizeFont = Narrow<std::int16_t>(font->points);
  ShowSample();
}

void frmTerminalOptions::ChooseColor(const char* title, std::string TerminalAppearance::*color) {
  const auto token = Token();
  std::string& text = appearance_.*color;
  const auto chosen =
      world().appearance->ChooseColor(title, ColorFromText(text, TerminalAppearance().*color));
  if (!chosen || token.expired()) return;
  text = ColorText(*chosen);
  ShowSample();
}

void frmTerminalOptions::ShowSample() {
  ApplyAppearance(appearance_, form().terminalScreen("VtSample"));
  form().label("lblFont").SetText(appearance_.NameFont + ", " + NumberText(appearance_.SizeFont) +
                                  " points");
  form().label("lblForeColor").SetText(appearance_.ColorFont);
  form().label("lblBoldColor").SetText(appearance_.ColorBold);
  form().label("lblBackColor").SetText(appearance_.ColorBG);
}

}  // namespace velmoor
