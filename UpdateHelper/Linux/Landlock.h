#pragma once

namespace tunedeck::helper {

/// Version of the kernel's Landlock, which enforces the rights to files, ports and signals; 0 if it has none.
int landlockVersion();

} // namespace tunedeck::helper
