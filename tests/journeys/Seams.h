// The program on a machine of fakes.
#pragma once

#include <string>

#include "app/Application.h"
#include "support/FakeMachine.h"

namespace tessaly {

inline Application::Seams seamsOf(FakeMachine& machine, const std::string& homeDirectory) {
  return {.dispatch = &machine.dispatch,
          .folderPanel = &machine.folderPanel,
          .savePanel = &machine.savePanel,
          .workspace = &machine.workspace,
          .pasteboard = &machine.pasteboard,
          .previewPanel = &machine.previewPanel,
          .icon = &machine.icon,
          .notifications = &machine.notifications,
          .trash = &machine.trash,
          .settings = &machine.settings,
          .openTool = machine.openTool.tool(),
          .access = [&machine] { return machine.isAccessGranted; },
          .launch =
              [&machine](const Process::Launch& launch) {
                machine.launched.push_back(launch);
                return succeeded();
              },
          .quit = [&machine] { ++machine.timesQuit; },
          .loginItem = &machine.loginItem,
          .statusBar = &machine.statusBar,
          .hotKey = &machine.hotKey,
          .homeDirectory = homeDirectory,
          .supportDirectory = machine.support.path(),
          .run = noTools,
          .volumeUsage = [&machine] { return machine.disk; }};
}

}  // namespace tessaly
