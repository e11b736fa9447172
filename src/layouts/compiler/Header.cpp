#include "Header.h"

#include <QRegularExpression>
#include <algorithm>
#include <map>
#include <stdexcept>

namespace velmoor::layouts {
namespace {

QString Quoted(const QString& text) {
  QString quoted = QStringLiteral("\"");
  for (const char byte : text.toUtf8()) {
    if (byte == '"' || byte == '\\') {
      quoted += QLatin1Char('\\');
      quoted += QLatin1Char(byte);
    } else if (byte == '\n') {
      quoted += QLatin1String("\\n");
    } else if (byte >= 0x20 && byte < 0x7f) {
      quoted += QLatin1Char(byte);
    } else {
      // Three digits always: what follows could be one more.
      quoted +=
          QStringLiteral("\\%1").arg(static_cast<unsigned char>(byte), 3, 8, QLatin1Char('0'));
    }
  }
  return quoted + QLatin1Char('"');
}

QString Word(bool value) {
  return value ? QStringLiteral("true") : QStringLiteral("false");
}

// A member: one control, or those of one name that end in the numbers from 0 on.
struct Member {
  QString name;
  QString kind;
  std::vector<std::size_t> places;
  bool isRow = false;
};

// The name without its number, and the number; -1: it has none.
std::pair<QString, int> Split(const QString& name) {
  static const QRegularExpression kNumbered(QStringLiteral("^(.*?)(\\d+)$"));
  const QRegularExpressionMatch match = kNumbered.match(name);
  if (!match.hasMatch()) return {name, -1};
  return {match.captured(1), match.captured(2).toInt()};
}

std::vector<Member> MembersOf(const Source& source) {
  std::map<QString, std::map<int, std::size_t>> numbered;
  for (std::size_t i = 0; i < source.controls.size(); ++i) {
    const auto [stem, number] = Split(source.controls[i].name);
    if (number >= 0) numbered[stem][number] = i;
  }
  std::vector<Member> members;
  for (std::size_t i = 0; i < source.controls.size(); ++i) {
    const SourceControl& control = source.controls[i];
    const auto [stem, number] = Split(control.name);
    const auto row = numbered.find(stem);
    const bool isRow = number >= 0 && row->second.size() > 1 && row->second.begin()->first == 0 &&
                       row->second.rbegin()->first == static_cast<int>(row->second.size()) - 1;
    if (!isRow) {
      members.push_back({control.name, control.kind, {i}});
    } else if (row->second.begin()->second == i) {
      Member member{stem, control.kind, {}, true};
      for (const auto& [each, place] : row->second) {
        if (source.controls[place].kind != control.kind) {
          throw std::runtime_error(
              (control.name + QStringLiteral(": its row has two kinds")).toStdString());
        }
        member.places.push_back(place);
      }
      members.push_back(std::move(member));
    }
  }
  return members;
}

void WriteCommands(QString& out, const Source& source) {
  if (source.commands.empty()) return;
  QStringList names;
  for (const SourceCommand& command : source.commands) names += command.name;
  out += QStringLiteral("  enum class Id : std::size_t { %1 };\n")
             .arg(names.join(QStringLiteral(", ")));
  out += QStringLiteral("  static constexpr std::array<CommandLayout, %1> kCommands{{\n")
             .arg(source.commands.size());
  for (const SourceCommand& command : source.commands) {
    out += QStringLiteral("      {%1, %2, %3, %4, %5},\n")
               .arg(Quoted(command.name), Quoted(command.text), Word(command.enabled),
                    Word(command.visible), Word(command.checked));
  }
  out += QLatin1String("  }};\n");
}

void WriteControls(QString& out, const Source& source) {
  for (const SourceControl& control : source.controls) {
    if (control.choices.isEmpty()) continue;
    QStringList quoted;
    for (const QString& choice : control.choices) quoted += Quoted(choice);
    out +=
        QStringLiteral("  static constexpr std::array<std::string_view, %1> %2Choices{%3};\n")
            .arg(QString::number(quoted.size()), control.name, quoted.join(QStringLiteral(", ")));
  }
  if (source.controls.empty()) return;
  out += QStringLiteral("  static constexpr std::array<ControlLayout, %1> kControls{{\n")
             .arg(source.controls.size());
  for (const SourceControl& control : source.controls) {
    const QString kind = control.kind.left(1).toLower() + control.kind.mid(1);
    const QString choices =
        control.choices.isEmpty() ? QStringLiteral("{}") : control.name + QStringLiteral("Choices");
    out += QStringLiteral("      {%1, ControlKind::%2, %3, %4, %5, %6, %7, %8, %9},\n")
               .arg(Quoted(control.name), kind, Quoted(control.text), Quoted(control.toolTip),
                    choices, QString::number(control.chosen), Word(control.enabled),
                    Word(control.visible), Word(control.checked));
  }
  out += QLatin1String("  }};\n");
}

void WriteMembers(QString& out, const Source& source) {
  QString members;
  QStringList initialisers;
  for (const Member& member : MembersOf(source)) {
    const QString kind = QStringLiteral("typename Kinds::") + member.kind;
    QStringList places;
    for (const std::size_t place : member.places) places += QString::number(place);
    if (member.isRow) {
      members += QStringLiteral("  ControlRow<%1, %2> %3;\n")
                     .arg(kind, QString::number(places.size()), member.name);
    } else {
      members += QStringLiteral("  %1& %2;\n").arg(kind, member.name);
    }
    initialisers +=
        QStringLiteral("%1(access.template %2<%3>(%4))")
            .arg(member.name, member.isRow ? QStringLiteral("Row") : QStringLiteral("At"), kind,
                 places.join(QStringLiteral(", ")));
  }
  if (!source.commands.empty()) {
    members += QLatin1String("  CommandSet<Id> commands;\n");
    initialisers += QStringLiteral("commands(access)");
  }
  out += members;
  out += QStringLiteral(
             "\n private:\n  explicit %1Controls([[maybe_unused]] const LayoutAccess& access)")
             .arg(source.name);
  if (!initialisers.isEmpty()) {
    out += QLatin1String("\n      : ") + initialisers.join(QStringLiteral(",\n        "));
  }
  out += QLatin1String(" {}\n");
}

}  // namespace

QByteArray HeaderOf(const Source& source) {
  QString out = QStringLiteral(
                    "// Made from %1.ui; see platform/Layout.h.\n"
                    "#pragma once\n\n#include \"platform/Layout.h\"\n\n"
                    "namespace velmoor::layouts {\n\n"
                    "struct %1Layout {\n")
                    .arg(source.name);
  WriteCommands(out, source);
  WriteControls(out, source);
  out += QStringLiteral("  static constexpr Layout kLayout{%1, %2, %3, %4};\n};\n\n")
             .arg(Quoted(source.name), Quoted(source.caption),
                  source.controls.empty() ? QStringLiteral("{}") : QStringLiteral("kControls"),
                  source.commands.empty() ? QStringLiteral("{}") : QStringLiteral("kCommands"));
  out += QStringLiteral(
             "template <typename Kinds>\nstruct %1Controls : %1Layout {\n"
             "  template <typename Others>\n  using With = %1Controls<Others>;\n\n"
             "  explicit %1Controls(LaidOut& window) "
             ": %1Controls(LayoutAccess(window, %1Layout::kLayout)) {}\n\n")
             .arg(source.name);
  WriteMembers(out, source);
  out += QStringLiteral("};\n\nusing %1 = %1Controls<Ports>;\n\n}  // namespace velmoor::layouts\n")
             .arg(source.name);
  return out.toUtf8();
}

}  // namespace velmoor::layouts
