#include "scanner/GerenalData.h"

#include "platform/UserDefaults.h"

namespace velq
{

bool GerenalData::ignore() const
{
    return UserDefaults::standardUserDefaults().boolForKey(m_ignoreKey);
}

void GerenalData::resetIgnore()
{
    UserDefaults::standardUserDefaults().setBool(!ignore(), m_ignoreKey);
}

} // namespace velq
