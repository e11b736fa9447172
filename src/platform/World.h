// Everything that the logic asks of the world outside, behind one set of ports. A program fills it
// with adapters once, at its start; tests fill it with twins that remember and fail on demand.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/UnhandledError.h"

namespace velmoor {

class AppearanceDialogs;
class Clipboard;
class Clock;
class Databases;
class EventPump;
class FileDialogs;
class Files;
class Forms;
class HelpViewer;
class JsonTexts;
class KeyedTexts;
class Log;
class Mcatbase;
class MessageBoxes;
class PdfMaker;
class Printing;
class Rx900Utils;
class SerialPorts;
class Settings;
class TextViewer;

struct World {
  MessageBoxes* boxes = nullptr;
  FileDialogs* dialogs = nullptr;
  EventPump* events = nullptr;
  Clock* clock = nullptr;
  Settings* settings = nullptr;
  Files* files = nullptr;
  Databases* databases = nullptr;
  Clipboard* clipboard = nullptr;           // null where a program has none
  AppearanceDialogs* appearance = nullptr;  // null where a program has none
  TextViewer* textViewer = nullptr;         // null where a program has none
  PdfMaker* pdf = nullptr;                  // null where a program makes no documents
  Printing* printing = nullptr;             // null where a program has no printers
  HelpViewer* helpViewer = nullptr;         // null where a program has none
  SerialPorts* serialPorts = nullptr;       // null where a program has none to choose from
  Forms* forms = nullptr;                   // windows; null where a program has none
  JsonTexts* jsonTexts = nullptr;           // null where a program writes none
  KeyedTexts* keyedTexts = nullptr;         // null where a program reads none
  Log* log = nullptr;                       // null where a program keeps none
  Rx900Utils* rx900Utils = nullptr;         // the card's number formats and checksum
  Mcatbase* catalogue = nullptr;            // the catalogue library

  // Where the program's own files lie: "IdeInfo.mdb" and "Velmoor.spt". Never the current
  // directory.
  std::string appDirectory;
  // The directory of "tempIdeInfo.mdb", this process's alone; it vanishes with the process.
  std::string catalogueCopyDirectory;
  // Where a project is worked on whose own folder cannot be written; a directory of the user's own
  // that stays. Where it cannot be made, or is empty, `catalogueCopyDirectory` serves.
  std::string workDirectory;
  // The user's directory for reports of errors.
  std::string reportDirectory;

  // The libraries and the system below the program, "Qt 6.4.2", as they are at run time; none: not
  // known.
  std::function<std::vector<std::string>()> foundations;

  // Takes errors that no procedure handled; none: a box tells of them and the program goes on.
  ErrorHandler onUnhandledError;
  // The calls that led to the last exception; none: they are not known.
  std::function<std::vector<std::string>()> lastThrowTrace;
};

// The world in force. Throws std::logic_error before SetWorld.
[[nodiscard]] World& world();
// Puts a world in force and returns the one before (null at first). The caller owns both.
World* SetWorld(World* next);

}  // namespace velmoor
