#pragma once

namespace tunedeck::test {

/// "--status-item": shows the real status item and prints "gone" or "there" with its placement whenever it comes or
/// goes and on "where" on its input, "activated" when it is; "click" clicks the docked icon, "menu" opens its menu and
/// chooses each entry.
int runStatusItem(int argc, char** argv);

/// "--tray-host": a StatusNotifierItem watcher and host in one. Prints each registration with its menu's path;
/// "activate" on its input activates the item, "leave" and "come" unregister and register the host.
int runTrayHost(int argc, char** argv);

} // namespace tunedeck::test
