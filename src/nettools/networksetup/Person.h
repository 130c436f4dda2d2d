#pragma once

namespace velq::nettools
{

/// As root, makes the process for good that of the person for whom it was started: the one whose
/// number is in VELQ_UID, else in SUDO_UID, else in PKEXEC_UID. Its environment is then that of the
/// person's session, as far as their service manager knows it. Without any of these, or not as
/// root, the process stays what it is.
///
/// Throws Refusal when the number is nobody's, and when the process cannot become that person.
void becomePerson();

} // namespace velq::nettools
