#pragma once

#include "scanner/NetworkService.h"

#include <QList>

namespace velq
{

/// The computer's hardware ports as the system lists them: each with its name (netType and name),
/// its device and its hardware address, all else unset. Any thread; runs a tool and waits for it.
///
/// A port without an address is left out, and so is the last one listed: its text ends in one line
/// feed more than the others', which makes it four lines instead of three.
QList<NetworkService> hardwarePorts();

/// Those in the tool's output, already cut to the values behind the labels.
QList<NetworkService> hardwarePortsFrom(const QString &output);

} // namespace velq
