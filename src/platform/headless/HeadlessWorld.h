// All headless adapters, put in force for the life of the object.
//
// Files, databases, the catalogue library and the number formats are left as they were in the world
// before, where there was one; a program or test that needs others sets them in `world`.
#pragma once

#include "platform/World.h"
#include "platform/headless/HeadlessBoxes.h"
#include "platform/headless/HeadlessClipboard.h"
#include "platform/headless/HeadlessDesktop.h"
#include "platform/headless/HeadlessEvents.h"
#include "platform/headless/HeadlessForms.h"
#include "platform/headless/HeadlessLog.h"
#include "platform/headless/HeadlessPrinting.h"
#include "platform/headless/HeadlessSettings.h"

namespace velmoor::headless {

class HeadlessWorld {
 public:
  HeadlessWorld() : events(clock), forms(events, boxes), before_(SetWorld(nullptr)) {
    if (before_ != nullptr) world = *before_;
    world.boxes = &boxes;
    world.dialogs = &dialogs;
    world.events = &events;
    world.clock = &clock;
    world.settings = &settings;
    world.clipboard = &clipboard;
    world.appearance = &appearance;
    world.textViewer = &textViewer;
    world.pdf = &pdf;
    world.printing = &printing;
    world.helpViewer = &helpViewer;
    world.log = &log;
    world.forms = &forms;
    SetWorld(&world);
  }
  ~HeadlessWorld() { SetWorld(before_); }
  HeadlessWorld(const HeadlessWorld&) = delete;
  HeadlessWorld& operator=(const HeadlessWorld&) = delete;

  HeadlessClock clock;
  HeadlessEvents events;
  HeadlessSettings settings;
  HeadlessClipboard clipboard;
  HeadlessAppearanceDialogs appearance;
  HeadlessTextViewer textViewer;
  HeadlessPdfMaker pdf;
  HeadlessPrinting printing;
  HeadlessHelpViewer helpViewer;
  HeadlessLog log;
  HeadlessBoxes boxes;
  HeadlessDialogs dialogs;
  HeadlessForms forms;
  World world;

 private:
  World* before_;
};

}  // namespace velmoor::headless
