#include "TolmiApp/Dictation/DictationStages.h"

#include <QLoggingCategory>
#include <QMetaEnum>

namespace {
Q_LOGGING_CATEGORY(stages, "tolmi.stages", QtWarningMsg)

QString milliseconds(double seconds) {
    return QString::number(seconds, 'f', 3);
}
} // namespace

void logReady() {
    qCInfo(stages).noquote() << "ready";
}

void logStudioShown() {
    qCInfo(stages).noquote() << "studio";
}

void logStage(const DictationState &state, Date instant) {
    qCInfo(stages).noquote() << "state"
                             << QMetaEnum::fromType<DictationState::Kind>().valueToKey(int(state.kind()))
                             << milliseconds(instant.secondsSince1970());
}

void logTranscriptionTime(double seconds) {
    qCInfo(stages).noquote() << "transcribed" << milliseconds(seconds);
}
