#include "online/frmTerminalOptions.h"

#include "platform/AppearanceDialogs.h"
#include "platform/Numbers.h"
#include "platform/World.h"

namespace velmoor {

void frmTerminalOptions::FormLoad() {
  connections_ += ui().cmdFont.Click.Connect([this] { cmdFont_Click(); });
  const auto onClick = [this](Button& button, const char* title,
                              std::string TerminalAppearance::*color) {
    connections_ += button.Click.Connect([this, title, color] { ChooseColor(title, color); });
  };
  onClick(ui().cmdForeColor, "Text Color", &TerminalAppearance::ColorFont);
  onClick(ui().cmdBoldColor, "Bold Text Color", &TerminalAppearance::ColorBold);
  onClick(ui().cmdBackColor, "Background Color", &TerminalAppearance::ColorBG);
  TerminalScreen& sample = ui().VtSample;
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
  ApplyAppearance(appearance_, ui().VtSample);
  ui().lblFont.SetText(appearance_.NameFont + ", " + NumberText(appearance_.SizeFont) + " points");
  ui().lblForeColor.SetText(appearance_.ColorFont);
  ui().lblBoldColor.SetText(appearance_.ColorBold);
  ui().lblBackColor.SetText(appearance_.ColorBG);
}

}  // namespace velmoor
