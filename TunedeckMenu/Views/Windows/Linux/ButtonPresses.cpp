#include "TunedeckMenu/Views/Windows/ButtonPresses.h"

#include "TunedeckCore/Support/Linux/Xcb.h"

#include <QGuiApplication>
#include <QSocketNotifier>

#include <xcb/xinput.h>

#include <cstdint>

namespace tunedeck {

namespace {

/// Buttons 4 to 7 are the wheel.
bool isWheel(std::uint32_t button) {
    return button >= 4 && button <= 7;
}

} // namespace

/// A separate connection: selecting events on Qt's could replace what Qt has selected.
class ButtonPresses::Observer {
public:
    explicit Observer(ButtonPresses& owner) : m_owner(owner), m_x(xcb_connect(nullptr, nullptr)) {
        const auto* const extension = xcb_get_extension_data(m_x.get(), &xcb_input_id); // null without a connection
        if (extension == nullptr || extension->present == 0) {
            return;
        }
        m_opcode = extension->major_opcode;
        // From version 2.1 on, raw events are sent even while another program holds the pointer.
        const XcbReply<xcb_input_xi_query_version_reply_t> version(
            xcb_input_xi_query_version_reply(m_x.get(), xcb_input_xi_query_version(m_x.get(), 2, 2), nullptr));
        const struct {
            xcb_input_event_mask_t head{XCB_INPUT_DEVICE_ALL_MASTER, 1};
            std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS;
        } wanted;
        const auto root = xcb_setup_roots_iterator(xcb_get_setup(m_x.get())).data->root;
        xcb_input_xi_select_events(m_x.get(), root, 1, &wanted.head);
        xcb_flush(m_x.get());
        m_notifier = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(m_x.get()), QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, &m_owner, [this] { read(); });
    }

private:
    void read() {
        bool pressed = false;
        while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(m_x.get())}) {
            const auto* const press = reinterpret_cast<const xcb_input_raw_button_press_event_t*>(event.get());
            if ((event->response_type & 0x7f) == XCB_GE_GENERIC && press->extension == m_opcode &&
                press->event_type == XCB_INPUT_RAW_BUTTON_PRESS && !isWheel(press->detail)) {
                pressed = true;
            }
        }
        m_notifier->setEnabled(xcb_connection_has_error(m_x.get()) == 0);
        if (pressed) {
            Q_EMIT m_owner.pressed(); // may stop, which deletes this
        }
    }

    ButtonPresses& m_owner;
    XcbConnection m_x;
    std::uint8_t m_opcode = 0;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

ButtonPresses::ButtonPresses() = default;

ButtonPresses::~ButtonPresses() = default;

void ButtonPresses::start() {
    if (m_observer == nullptr && qGuiApp->nativeInterface<QNativeInterface::QX11Application>() != nullptr) {
        m_observer = std::make_unique<Observer>(*this);
    }
}

void ButtonPresses::stop() {
    m_observer.reset();
}

} // namespace tunedeck
