#pragma once

#include "Platform/Linux/Clipboard/ClipboardConnection.h"
#include "Platform/Linux/Clipboard/PasteRestore.h"
#include "Platform/Linux/Wayland/WaylandClipboardOwner.h"
#include "Platform/Linux/Wayland/WaylandClipboardReader.h"

struct zwlr_data_control_device_v1;
struct zwlr_data_control_manager_v1;
struct zwlr_data_control_offer_v1;

/// The clipboard over one connection to a Wayland compositor that lets programs without a window see it.
class WaylandClipboard final : public ClipboardConnection {
public:
    /// Whether the front application pastes the primary selection.
    using NeedsPrimary = std::function<bool()>;

    /// Null when the compositor does not let programs without a window see the clipboard.
    static std::unique_ptr<WaylandClipboard> open(std::unique_ptr<WaylandConnection> connection,
        std::shared_ptr<PasteProgress> progress, NeedsPrimary needsPrimary, Interruption interruption);
    /// Whether the compositor lets programs without a window see the clipboard.
    static bool isOfferedBy(const WaylandConnection &connection);
    ~WaylandClipboard() override;

    bool isOver() const override;
    void retire() override { m_isRetired = true; }
    void handleEvents() override;
    /// The mark is any number while the toolkit owns the clipboard.
    Found items(Instant until, ToolkitMark toolkit) override;
    void readAhead(Instant until, ToolkitMark toolkit) override;
    bool isToolkits(ToolkitMark toolkit) override;
    bool take(ClipboardContent content) override;
    bool takeDictated(const QString &text, const std::vector<PasteboardItem> &displaced) override;
    bool holdsDictatedText() override;
    void restore(const std::vector<PasteboardItem> &items) override;
    /// No Wayland clipboard manager can be asked to keep something: what was displaced comes back, and who
    /// watches the clipboard keeps it.
    void handOver(Instant until) override;

private:
    using Owner = WaylandClipboardOwner;
    using Reader = WaylandClipboardReader;
    using Offer = std::shared_ptr<const WaylandOffer>;
    struct Setup {
        std::unique_ptr<WaylandConnection> connection;
        zwlr_data_control_manager_v1 *manager;
        std::shared_ptr<PasteProgress> progress;
        NeedsPrimary needsPrimary;
        Interruption interruption;
    };

    explicit WaylandClipboard(Setup setup);
    void watch();
    Offer takeOffer(zwlr_data_control_offer_v1 *offer);
    void step(std::optional<Instant> until);
    void catchUp(Instant until);
    Instant limit(Instant until) const;
    void continueReading(Instant until);
    std::vector<PasteboardItem> read(Offer offer, Instant until);
    void noteRead(const QString &type);
    void doWhatIsDue();
    void endPaste();
    void endPasteWith(ClipboardContent content);
    void bringPrimaryBack();
    bool takePrimary(const QString &text);

    std::unique_ptr<WaylandConnection> m_connection;
    zwlr_data_control_manager_v1 *m_manager;
    zwlr_data_control_device_v1 *m_device;
    std::shared_ptr<PasteProgress> m_progress;
    NeedsPrimary m_needsPrimary;
    PasteRestore m_restore;
    Interruption m_interruption;
    Owner m_owner;
    Owner m_primary;
    bool m_isRetired = false;

    /// Those that the compositor has made and not yet put on a selection.
    std::vector<std::shared_ptr<WaylandOffer>> m_newOffers;
    Offer m_offer;
    Offer m_primaryOffer;
    /// What has been read of the present offer.
    std::unique_ptr<Reader> m_snapshot;
    std::optional<ClipboardContent> m_displacedPrimary;
};
