#include "Tolmictl/KeyBindingTime.h"

#include <fstream>
#include <sstream>
#include <string>

#include <unistd.h>

uint64_t startOfThisProcess() {
    // proc(5) counts the fields from 1; the second is the program's name, which may hold anything.
    constexpr int firstFieldBehindName = 3;
    constexpr int startTimeField = 22;
    std::string stat;
    std::getline(std::ifstream("/proc/self/stat"), stat);
    const size_t nameEnd = stat.rfind(')');
    const long ticksPerSecond = sysconf(_SC_CLK_TCK);
    if (nameEnd == std::string::npos || ticksPerSecond <= 0)
        return 0;
    std::istringstream fields(stat.substr(nameEnd + 1));
    std::string skipped;
    for (int field = firstFieldBehindName; field < startTimeField; ++field)
        fields >> skipped;
    uint64_t ticks = 0;
    fields >> ticks;
    return ticks * 1000000 / uint64_t(ticksPerSecond);
}
