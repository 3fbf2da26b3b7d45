#pragma once

namespace tunedeck::test {

/// What this program does instead of testing when its first argument names a role; its exit status. Orders come line by
/// line on its input, and what happens is printed.
///
/// - "--instance SOCKET REQUEST PATIENCE" prints what it is beside the others on the socket; the first one then prints
///   each request and ends on "quit".
/// - "--status-item" shows the real status item; prints "gone" or "there" with its placement whenever it comes or goes
///   and on "where", and "activated" when it is; "click" clicks the docked icon, "menu" chooses each entry of its menu.
/// - "--tray-host" is a watcher and host of StatusNotifierItems in one. It prints each registration with its menu's
///   path; "activate" activates the item, "leave" and "come" unregister and register the host.
int runRole(int argc, char** argv);

} // namespace tunedeck::test
