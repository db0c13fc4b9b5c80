#include "Views/HistoryFixture.h"

#include <cerrno>

namespace {
std::optional<QString> textOf(const QVariantMap &values, const char *name) {
    const auto found = values.constFind(QLatin1String(name));
    return found == values.constEnd() ? std::nullopt : std::optional(found->toString());
}

HistoryEntry entryOf(const QVariantMap &values) {
    HistoryEntry entry;
    entry.timestamp = VirtualClock::start + -60.0 * values.value(QStringLiteral("minutesAgo"), 0).toDouble();
    entry.rawText = textOf(values, "raw").value_or(QString());
    entry.refinedText = textOf(values, "refined").value_or(entry.rawText);
    entry.language = textOf(values, "language").value_or(QStringLiteral("en"));
    entry.pasteTargetAppName = textOf(values, "app");
    entry.pasteTargetBundleID = textOf(values, "bundleID");
    if (entry.pasteTargetAppName)
        entry.pasteTimestamp = entry.timestamp + 3;
    entry.audioFileRelativePath = textOf(values, "audio");
    entry.isPinned = values.value(QStringLiteral("isPinned")).toBool();
    return entry;
}
} // namespace

HistoryFixture::HistoryFixture() {
    open(QList<HistoryEntry>());
}

HistoryFixture::~HistoryFixture() = default;

void HistoryFixture::open(const QVariantList &entries) {
    QList<HistoryEntry> made;
    for (const QVariant &values : entries)
        made.append(entryOf(values.toMap()));
    open(made);
}

void HistoryFixture::openMany(int count) {
    QList<HistoryEntry> made;
    for (int number = 0; number < count; ++number)
        made.append(entryOf({ { QStringLiteral("raw"), QStringLiteral("Entry %1").arg(number) },
            { QStringLiteral("minutesAgo"), number } }));
    open(made);
}

void HistoryFixture::open(const QList<HistoryEntry> &entries) {
    // The previous objects are destroyed only once views use the new ones.
    const auto formerUser = std::exchange(m_user, std::make_unique<HistoryWorkspaceFixture>(entries));
    for (const HistoryEntry &entry : entries)
        m_user->addRecording(entry.audioFileRelativePath.value_or(QString()));
    const auto formerTexts = std::exchange(
        m_texts, std::make_unique<ViewTexts>(m_user->settings.store, PlatformTexts::forLinux()));
    const auto formerModel = std::exchange(m_model, m_user->open());
    Q_EMIT opened();
}

void HistoryFixture::pass(double seconds) {
    m_user->clock.advance(seconds);
}

void HistoryFixture::setRomanian() {
    m_user->settings.store.setUiLanguage(AppLanguage::Romanian);
}

void HistoryFixture::setVanished(const QString &recording) {
    m_user->files.files.erase(HistoryWorkspaceFixture::recordingPath(recording));
}

void HistoryFixture::setUnplayable() {
    m_user->players.canPlay = false;
}

void HistoryFixture::setUnwritable() {
    m_user->writer.failures.push_back(SystemError::fromErrno(EACCES, QStringLiteral("/forbidden.txt")));
}

QString HistoryFixture::clipboard() const {
    const auto &items = m_user->pasteboard.content;
    return items.empty() ? QString() : QString::fromUtf8(items.front().representations.front().second);
}

QStringList HistoryFixture::proposedNames() const {
    QStringList names;
    for (const SavePanelRequest &request : m_user->savePanel.requests)
        names += request.proposedName;
    return names;
}

bool HistoryFixture::chooseFile(const QString &path) {
    return m_user->savePanel.answer(FileURL(path));
}

QString HistoryFixture::writtenText() const {
    return m_user->writer.writes.empty() ? QString()
                                         : QString::fromUtf8(m_user->writer.writes.back().content);
}

QStringList HistoryFixture::revealed() const {
    return m_user->fileViewer.calls;
}

QStringList HistoryFixture::playerCalls() const {
    return m_user->players.calls;
}
