#include "TolmiApp/Dictation/DictationKeySources.h"

bool DictationKeySources::press(const Source &source) {
    if (m_owner)
        return false;
    m_owner = source;
    return true;
}

bool DictationKeySources::release(const Source &source) {
    if (m_owner != source)
        return false;
    m_owner.reset();
    return true;
}
