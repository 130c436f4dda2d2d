#pragma once

namespace velq
{

/// What the build knows of the scripts that install and remove the root daemon. Written by the
/// build from the files in resources/VelqDemon.
struct DaemonScripts {
    /// The text that the root's shell gets as an argument: it copies the script named to it where
    /// only root can write, and runs the copy when it has the digest named to it.
    static const char bootstrap[];
    /// SHA-256, in hexadecimal digits, of the bundle's resource "copy" of type "sh".
    static const char copyDigest[];
    /// The same of "remove" of type "sh".
    static const char removeDigest[];
};

} // namespace velq
