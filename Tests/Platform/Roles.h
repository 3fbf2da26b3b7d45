#pragma once

namespace tunedeck::test {

/// Runs this program in a role instead of its tests, when its first argument names one; returns the exit status. A role
/// reads commands from its input, line by line, exits at its end, and prints what happens:
///
/// - "--instance LOCK MILLISECONDS" starts a single instance, and prints the error, "handed over" or "first". The first
///   then prints "reopen" with the activation token for each request.
/// - "--status-item" shows the status item. It prints "there" or "gone" with the placement whenever that changes, and
///   after "where", "warn", which shows the other symbol, "dark" and "gnome", which change the desktop. "click" clicks
///   the docked icon twice, "menu" selects each entry of its menu.
/// - "--desktop" uses the other parts of the platform. It prints "dark" or "light" when that changes; "post ID" posts a
///   notification, whose click prints "opened ID"; requests to reopen print "reopen".
int runRole(int argc, char** argv);

} // namespace tunedeck::test
