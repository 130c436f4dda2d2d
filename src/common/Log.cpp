#include "common/Log.h"

#include "common/Text.h"
#include "platform/StandardError.h"

namespace velq
{

void log(const QString &line)
{
    StandardError::write(onOneLine(line).toUtf8() + '\n');
}

} // namespace velq
