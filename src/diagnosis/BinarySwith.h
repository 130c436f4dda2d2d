#pragma once

#include <QString>

namespace velq
{

/// Netmasks from hexadecimal digits to the dotted decimal form. Any thread.
class BinarySwith
{
public:
    BinarySwith() = delete;

    /// 0 to 15 for a hexadecimal digit of either case; 0 for any other text.
    static int sexadecimalCharactor(const QString &character);
    /// "255.255.255.0" for "ffffff00"; empty when there are not exactly eight characters.
    static QString sexadecimalToIPv4(const QString &digits);
    /// The same for any number of pairs, and with "0x" in front or between. The caller avoids an
    /// odd number of digits: the last one is taken for the first of a pair whose second is 0.
    static QString sexadecimalToDecimal(const QString &digits);
};

} // namespace velq
