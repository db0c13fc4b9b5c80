#include "Desktop/OpenStudio.h"

#include "Support/UntilTrue.h"
#include "TolmiApp/History/HistoryCodec.h"

#include <QDir>

namespace {
/// Width of the window as soon as the history has its room.
constexpr int historyWidth = 1140;

HistoryEntry entry(const QString &said, const QString &written, double time) {
    return { { .rawText = said, .refinedText = written, .language = "en" }, QUuid::createUuid(), { time } };
}

QList<HistoryEntry> makeHistory() {
    QList<HistoryEntry> entries { entry("um the build is green again the flaky test waited for a socket",
                                      "The build is green again. The flaky test waited for a socket.", 400),
        entry("send the budget to maria by friday the room is booked thank you",
            "Send the budget to Maria by Friday. The room is booked! Thank you.", 300),
        entry("thank you for your help john", "Thank you for your help, John.", 200),
        entry("bread two lemons and uh green tea", "Bread, two lemons and Green tea.", 100) };
    entries[1].isPinned = true;
    entries[1].pasteTargetAppName = "Thunderbird";
    entries[2].audioFileRelativePath = "recording-of-john.wav";
    entries[2].durationSeconds = 1.4;
    return entries;
}

bool keepHistory(const QList<HistoryEntry> &history, const QString &recordingPath) {
    QDir().mkpath(QFileInfo(recordingPath).path());
    QFile file(dataFolder() + "/history.json");
    return QFile::copy(QStringLiteral(TOLMI_SAMPLES_DIR "/english-1.wav"), recordingPath)
        && file.open(QIODevice::WriteOnly) && file.write(HistoryCodec::encode(history).value()) > 0;
}
} // namespace

const QList<HistoryEntry> &OpenStudio::history() {
    static const QList<HistoryEntry> entries = makeHistory();
    return entries;
}

QString OpenStudio::recordingPath() {
    return dataFolder() + "/audio-cache/" + history()[2].audioFileRelativePath.value();
}

void OpenStudio::open(const QJsonObject &settings) {
    ASSERT_TRUE(prepareHome({ .settings = settings }));
    ASSERT_TRUE(keepHistory(history(), recordingPath()));
    ASSERT_TRUE(m_program.start(QStringLiteral(TOLMI_PROGRAM))) << m_program.output().toStdString();
    m_windows = std::make_unique<AccessibleProgram>(m_program.processId());
    const AccessibleElement window = control("frame", "Tolmi Studio");
    ASSERT_TRUE(untilTrue([&window] { return window.now().is(State::Active); }));
}

void OpenStudio::TearDown() {
    EXPECT_TRUE(m_program.quit()) << m_program.output().toStdString();
}

void OpenStudio::goTo(const char *digit, const QString &title) {
    // The window may be active before it hears the keys.
    ASSERT_TRUE(untilTrue([this, digit, &title] {
        m_user.typeWithControl(digit);
        return isShown("heading", title);
    })) << title.toStdString();
}

void OpenStudio::choose(const HistoryEntry &entry) {
    goTo("4", "History");
    const AccessibleElement window = control("frame", "Tolmi Studio");
    ASSERT_TRUE(untilTrue([&window] { return window.rectangle().width() == historyWidth; }));
    const AccessibleElement row = control("list item", entry.refinedText);
    click(row);
    ASSERT_TRUE(untilTrue([&row] { return row.now().is(State::Selected); }));
}

AccessibleElement OpenStudio::control(const QString &role, const QString &name) const {
    auto found = m_windows->find(role, name);
    if (!found)
        throw std::runtime_error(
            (role + u' ' + name + " is not among\n" + m_windows->described()).toStdString());
    return *found;
}

AccessibleElement OpenStudio::buttonIn(const AccessibleElement &dialog, const QString &name) const {
    const AccessibleProgram inside = m_windows->within(dialog);
    auto found = inside.find("push button", name);
    if (!found)
        throw std::runtime_error((name + " is not among\n" + inside.described()).toStdString());
    return *found;
}

std::optional<AccessibleElement> OpenStudio::findButtonInRow(
    const HistoryEntry &entry, const QString &name) const {
    const QRect row = control("list item", entry.refinedText).rectangle();
    for (const AccessibleElement &element : m_windows->elements()) {
        if (element.role() == "push button" && element.name() == name && row.contains(element.rectangle()))
            return element;
    }
    return std::nullopt;
}

AccessibleElement OpenStudio::buttonInRow(const HistoryEntry &entry, const QString &name) const {
    std::optional<AccessibleElement> button;
    const bool isThere = untilTrue([&] {
        button = findButtonInRow(entry, name);
        return button.has_value();
    });
    if (!isThere)
        throw std::runtime_error((name + " is not among\n" + m_windows->described()).toStdString());
    return *button;
}

bool OpenStudio::isShown(const QString &role, const QString &name) const {
    return m_windows->find(role, name, 0).has_value();
}

bool OpenStudio::isShown(const HistoryEntry &entry) const {
    return isShown("list item", entry.refinedText);
}

void OpenStudio::click(const AccessibleElement &element) {
    m_user.click(element.rectangle().center());
}

void OpenStudio::clickButton(const QString &name) {
    click(control("push button", name));
}
