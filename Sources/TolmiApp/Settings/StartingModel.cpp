#include "TolmiApp/Settings/StartingModel.h"

namespace {
// The settings store keeps its model path under this key.
const QString modelPathKey = QStringLiteral("tolmi.modelPath");
} // namespace

namespace StartingModel {

FileURL url(const FileURL &programFolder) {
    return programFolder
        .appendingPathComponent(QStringLiteral("../share/tolmi/models/ggml-tolmi-starter-q8_0.bin"))
        .standardizedFileURL();
}

void choose(
    UserDefaults &defaults, const TolmiDefaultPaths::SearchContext &context, const FileURL &startingModel) {
    const auto stored = defaults.string(modelPathKey);
    const bool isRealModelInstalled
        = context.fileManager.fileExists(TolmiDefaultPaths::defaultModelURL(context).path());
    // Compared by name, because the program may have been moved since the path was stored.
    const bool isStartingModelStored
        = stored && FileURL(*stored).lastPathComponent() == startingModel.lastPathComponent();
    if (isRealModelInstalled && isStartingModelStored)
        defaults.removeObject(modelPathKey);
    else if (!isRealModelInstalled && (!stored || isStartingModelStored)
        && context.fileManager.fileExists(startingModel.path()))
        defaults.set(modelPathKey, startingModel.path());
}

} // namespace StartingModel
