#pragma once

#include "Platform/Linux/Files/FileDescriptor.h"
#include "Platform/Linux/Wayland/WaylandConnection.h"
#include "Platform/Pasteboard.h"

#include <deque>

struct zwlr_data_control_offer_v1;

/// What another program has on a selection: the types that it offers.
class WaylandOffer {
public:
    explicit WaylandOffer(zwlr_data_control_offer_v1 *offer);
    ~WaylandOffer();
    WaylandOffer(const WaylandOffer &) = delete;
    WaylandOffer &operator=(const WaylandOffer &) = delete;

    zwlr_data_control_offer_v1 *get() const { return m_offer; }
    const std::vector<QString> &types() const { return m_types; }

private:
    zwlr_data_control_offer_v1 *m_offer;
    std::vector<QString> m_types;
};

/// Reads an offer, several types at a time, so that one that never ends costs none of the others.
class WaylandClipboardReader {
public:
    explicit WaylandClipboardReader(std::shared_ptr<const WaylandOffer> offer);

    const WaylandOffer &offer() const { return *m_offer; }
    /// Whether everything was read that will be.
    bool isDone() const { return m_left.empty() && m_transfers.empty(); }
    /// What has been read so far, in the owner's order.
    std::vector<PasteboardItem> items() const;

    /// Asks for more types. The requests are to be sent then.
    void request();
    /// What to wait for.
    std::vector<pollfd> descriptors() const;
    /// Reads what has arrived.
    void read();

private:
    /// Data that comes in as fast as its owner gives it.
    struct Transfer {
        QString type;
        FileDescriptor pipe;
        QByteArray bytes;
    };

    bool goesOn(Transfer &transfer);

    std::shared_ptr<const WaylandOffer> m_offer;
    /// Those that are still to be asked for, the best first.
    std::deque<QString> m_left;
    std::vector<Transfer> m_transfers;
    PasteboardItem m_item;
    qsizetype m_size = 0;
};
