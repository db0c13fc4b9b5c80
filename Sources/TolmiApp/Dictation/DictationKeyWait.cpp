#include "TolmiApp/Dictation/DictationKeyWait.h"

#include "Foundation/Clock.h"

Task<> runWhenKeyIsUp(std::shared_ptr<HotkeyManager> hotkey, Clock &clock, std::function<void()> work) {
    constexpr double secondsBetween = 0.05;
    while (hotkey->isHeld())
        co_await sleep(clock, secondsBetween);
    work();
}
