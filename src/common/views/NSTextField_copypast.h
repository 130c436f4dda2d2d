#pragma once

class QKeyEvent;
class QLineEdit;

namespace velq
{

/// The editing shortcuts in text fields of an application without an Edit menu: Command, or Control
/// where that is the key, with X, C, V and A. Main thread.

/// Has the widget with the focus in the field's window cut, copy, paste or select all by its slot
/// of that name; the modifiers must be Command alone. Whether there was such a slot; when not, or
/// with any other combination, the event is still the base class's. What is read only is neither
/// cut from nor pasted into.
bool performKeyEquivalent(const QLineEdit &field, const QKeyEvent &event);

/// From the first call on, key presses of the process's windows go to the text fields in them
/// first, by performKeyEquivalent().
void offerKeyEquivalents();

} // namespace velq
