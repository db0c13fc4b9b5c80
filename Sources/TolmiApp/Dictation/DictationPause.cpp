#include "TolmiApp/Dictation/DictationPause.h"

#include "Foundation/Clock.h"

Task<> runBetweenDictations(std::function<bool()> isUnderWay, Clock &clock, std::function<void()> work) {
    constexpr double secondsBetween = 0.05;
    while (isUnderWay())
        co_await sleep(clock, secondsBetween);
    work();
}
