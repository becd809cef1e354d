#include "usb_adapter.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <poll.h>
#include <stdexcept>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <utility>

#include <linux/i2c.h>
#include <linux/usb/ch9.h>
#include <usbredirparser.h>

namespace zavra::simulator
{

namespace
{

constexpr unsigned char control_packet_bytes = 8;

constexpr usb_device_descriptor device_descriptor{.bLength = USB_DT_DEVICE_SIZE,
                                                  .bDescriptorType = USB_DT_DEVICE,
                                                  .bcdUSB = 0x0110,
                                                  .bDeviceClass = USB_CLASS_VENDOR_SPEC,
                                                  .bDeviceSubClass = 0,
                                                  .bDeviceProtocol = 0,
                                                  .bMaxPacketSize0 = control_packet_bytes,
                                                  .idVendor = 0x0403, // what the driver looks for
                                                  .idProduct = 0xC631,
                                                  .bcdDevice = 0x0100,
                                                  .iManufacturer = 0,
                                                  .iProduct = 0,
                                                  .iSerialNumber = 0,
                                                  .bNumConfigurations = 1};

/// The interface has no endpoints beside the control pipe.
constexpr struct
{
    usb_config_descriptor configuration{.bLength = USB_DT_CONFIG_SIZE,
                                        .bDescriptorType = USB_DT_CONFIG,
                                        .wTotalLength = USB_DT_CONFIG_SIZE + USB_DT_INTERFACE_SIZE,
                                        .bNumInterfaces = 1,
                                        .bConfigurationValue = 1,
                                        .iConfiguration = 0,
                                        .bmAttributes = USB_CONFIG_ATT_ONE,
                                        .bMaxPower = 50}; // 100 mA
    usb_interface_descriptor setting{.bLength = USB_DT_INTERFACE_SIZE,
                                     .bDescriptorType = USB_DT_INTERFACE,
                                     .bInterfaceNumber = 0,
                                     .bAlternateSetting = 0,
                                     .bNumEndpoints = 0,
                                     .bInterfaceClass = USB_CLASS_VENDOR_SPEC,
                                     .bInterfaceSubClass = 0,
                                     .bInterfaceProtocol = 0,
                                     .iInterface = 0};
} configuration_descriptor;

/// What the driver asks for. The last one has two more bits, for the first and for the last message of a transaction.
enum Adapter_Request : unsigned char { echo, get_functionality, set_delay, get_acknowledgement, transfer_bytes };
constexpr unsigned int place_in_transaction = 3;

constexpr std::uint32_t functionality = I2C_FUNC_I2C | I2C_FUNC_SMBUS_EMUL;
constexpr unsigned char acknowledged = 1;
constexpr unsigned char not_acknowledged = 2;

struct Destroy_Parser
{
    void operator()(usbredirparser* parser) const { usbredirparser_destroy(parser); }
};

/// The virtual machine that the adapter is plugged into.
class Machine
{
public:
    Machine(File_Descriptor socket, const Bus_Devices& devices)
        : socket_(std::move(socket)),
          devices_(devices),
          parser_(usbredirparser_create())
    {
        if (!parser_)
            throw std::bad_alloc();
        parser_->priv = this;
        parser_->log_func = [](void*, int, const char*) {};
        parser_->read_func = [](void* self, std::uint8_t* data, int count) {
            const ssize_t size = ::recv(of(self).socket_.get(), data, static_cast<std::size_t>(count), 0);
            return size == 0 ? -1 : outcome(size);
        };
        parser_->write_func = [](void* self, std::uint8_t* data, int count) {
            return outcome(::send(of(self).socket_.get(), data, static_cast<std::size_t>(count), MSG_NOSIGNAL));
        };
        parser_->hello_func = [](void* self, usb_redir_hello_header*) { of(self).plug_in(); };
        parser_->reset_func = [](void*) {};
        parser_->device_disconnect_ack_func = [](void*) {};
        parser_->set_configuration_func = [](void* self, std::uint64_t id, usb_redir_set_configuration_header* wanted) {
            of(self).send_configuration(id, wanted->configuration);
        };
        parser_->get_configuration_func = [](void* self, std::uint64_t id) { of(self).send_configuration(id, 1); };
        parser_->set_alt_setting_func = [](void* self, std::uint64_t id, usb_redir_set_alt_setting_header* wanted) {
            of(self).send_alternative(id, wanted->interface, wanted->alt);
        };
        parser_->get_alt_setting_func = [](void* self, std::uint64_t id, usb_redir_get_alt_setting_header* wanted) {
            of(self).send_alternative(id, wanted->interface, 0);
        };
        parser_->control_packet_func = [](void* self, std::uint64_t id, usb_redir_control_packet_header* packet,
                                          std::uint8_t* data, int size) {
            std::vector<unsigned char> bytes(data, data + size);
            usbredirparser_free_packet_data(of(self).parser_.get(), data);
            of(self).serve_control(id, *packet, std::move(bytes));
        };
        parser_->start_iso_stream_func = ignore;
        parser_->stop_iso_stream_func = ignore;
        parser_->start_interrupt_receiving_func = ignore;
        parser_->stop_interrupt_receiving_func = ignore;
        parser_->bulk_packet_func = ignore_data;
        parser_->iso_packet_func = ignore_data;
        parser_->interrupt_packet_func = ignore_data;
        parser_->cancel_data_packet_func = [](void* self, std::uint64_t id) { of(self).cancel(id); };

        std::uint32_t capabilities[USB_REDIR_CAPS_SIZE] = {};
        for (const int capability : {usb_redir_cap_connect_device_version, usb_redir_cap_ep_info_max_packet_size,
                                     usb_redir_cap_64bits_ids, usb_redir_cap_32bits_bulk_length})
            usbredirparser_caps_set_cap(capabilities, capability);
        usbredirparser_init(parser_.get(), "zavra-sim", capabilities, USB_REDIR_CAPS_SIZE, usbredirparser_fl_usb_host);
    }
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    pollfd waits_for() const
    {
        const bool has_more = usbredirparser_has_data_to_write(parser_.get()) > 0;
        return {socket_.get(), static_cast<short>(has_more ? POLLIN | POLLOUT : POLLIN), 0};
    }

    /// Whether it is still there.
    bool serve() { return usbredirparser_do_read(parser_.get()) == 0 && usbredirparser_do_write(parser_.get()) == 0; }

private:
    static Machine& of(void* self) { return *static_cast<Machine*>(self); }

    /// What is meant for endpoints that there are not.
    template <class Header>
    static void ignore(void*, std::uint64_t, Header*)
    {
    }

    template <class Header>
    static void ignore_data(void* self, std::uint64_t, Header*, std::uint8_t* data, int)
    {
        usbredirparser_free_packet_data(of(self).parser_.get(), data);
    }

    static int outcome(ssize_t size)
    {
        const bool later = size < 0 && (errno == EAGAIN || errno == EINTR);
        return later ? 0 : static_cast<int>(size);
    }

    void plug_in()
    {
        usb_redir_interface_info_header interfaces{};
        interfaces.interface_count = 1;
        interfaces.interface_class[0] = USB_CLASS_VENDOR_SPEC;
        usbredirparser_send_interface_info(parser_.get(), &interfaces);

        usb_redir_ep_info_header endpoints{};
        std::fill(std::begin(endpoints.type), std::end(endpoints.type), std::uint8_t{usb_redir_type_invalid});
        for (const std::size_t direction : {0, 16}) { // of the control pipe
            endpoints.type[direction] = usb_redir_type_control;
            endpoints.max_packet_size[direction] = control_packet_bytes;
        }
        usbredirparser_send_ep_info(parser_.get(), &endpoints);

        usb_redir_device_connect_header device{};
        device.speed = usb_redir_speed_full;
        device.device_class = device_descriptor.bDeviceClass;
        device.vendor_id = device_descriptor.idVendor;
        device.product_id = device_descriptor.idProduct;
        usbredirparser_send_device_connect(parser_.get(), &device);
    }

    void send_configuration(std::uint64_t id, std::uint8_t configuration)
    {
        usb_redir_configuration_status_header status{usb_redir_success, configuration};
        usbredirparser_send_configuration_status(parser_.get(), id, &status);
    }

    void send_alternative(std::uint64_t id, std::uint8_t interface, std::uint8_t alternative)
    {
        usb_redir_alt_setting_status_header status{usb_redir_success, interface, alternative};
        usbredirparser_send_alt_setting_status(parser_.get(), id, &status);
    }

    void serve_control(std::uint64_t id, usb_redir_control_packet_header packet, std::vector<unsigned char> bytes)
    {
        const bool to_host = (packet.requesttype & USB_DIR_IN) != 0;
        if (to_host)
            bytes.resize(packet.length);
        const std::optional<std::uint8_t> status = answer(packet, to_host, bytes);
        if (!status) {
            held_ = {id, packet};
            return;
        }
        packet.status = *status;
        if (*status != usb_redir_success)
            bytes.clear();
        packet.length = static_cast<std::uint16_t>(bytes.size());
        const bool has_data = to_host && !bytes.empty();
        usbredirparser_send_control_packet(parser_.get(), id, &packet, has_data ? bytes.data() : nullptr,
                                           has_data ? static_cast<int>(bytes.size()) : 0);
    }

    void cancel(std::uint64_t id)
    {
        if (!held_ || held_->first != id)
            return; // it was answered in the meantime
        usb_redir_control_packet_header packet = std::exchange(held_, std::nullopt)->second;
        packet.status = usb_redir_cancelled;
        packet.length = 0;
        usbredirparser_send_control_packet(parser_.get(), id, &packet, nullptr, 0);
    }

    /// @param bytes  those that came, or as many as are wanted
    /// @returns  a status of usbredir; none where there is to be no answer
    std::optional<std::uint8_t> answer(const usb_redir_control_packet_header& packet, bool to_host,
                                       std::vector<unsigned char>& bytes)
    {
        const auto give = [&](const auto& object) {
            const std::span answered(reinterpret_cast<const unsigned char*>(&object), sizeof object);
            bytes.assign(answered.begin(),
                         answered.begin() + std::min<std::ptrdiff_t>(std::ssize(answered), packet.length));
            return std::uint8_t{usb_redir_success};
        };
        const int descriptor = packet.value >> 8U;
        switch (packet.requesttype & USB_TYPE_MASK) {
        case USB_TYPE_STANDARD:
            if (packet.request == USB_REQ_GET_DESCRIPTOR && descriptor == USB_DT_DEVICE)
                return give(device_descriptor);
            if (packet.request == USB_REQ_GET_DESCRIPTOR && descriptor == USB_DT_CONFIG)
                return give(configuration_descriptor);
            if (packet.request == USB_REQ_GET_STATUS)
                return give(std::uint16_t{0});
            break;
        case USB_TYPE_VENDOR:
            switch (packet.request) {
            case echo:
                return give(packet.value);
            case get_functionality:
                return give(functionality);
            case set_delay:
                return usb_redir_success;
            case get_acknowledgement:
                return give(acknowledgement_);
            default:
                if ((packet.request & ~place_in_transaction) == transfer_bytes)
                    return transact(packet.index, to_host, bytes);
            }
        }
        return usb_redir_stall;
    }

    std::optional<std::uint8_t> transact(unsigned int address, bool is_read, std::vector<unsigned char>& bytes)
    {
        const std::size_t size = bytes.size();
        const int error = transfer(devices_, address, is_read, bytes);
        acknowledgement_ = error == 0 ? acknowledged : not_acknowledged;
        switch (error) {
        case ETIMEDOUT:
            return std::nullopt;
        case ENXIO:
            bytes.assign(size, 0xFF); // the driver asks for the acknowledgement only when it got them all
            [[fallthrough]];
        case 0:
            return usb_redir_success;
        default:
            return usb_redir_stall;
        }
    }

    File_Descriptor socket_;
    const Bus_Devices& devices_;
    std::unique_ptr<usbredirparser, Destroy_Parser> parser_;
    unsigned char acknowledgement_ = 0;
    std::optional<std::pair<std::uint64_t, usb_redir_control_packet_header>> held_;
};

}

Usb_Adapter::Usb_Adapter(const std::filesystem::path& path, Bus_Devices devices)
    : devices_(std::move(devices)),
      listener_("USB adapter", path, SOCK_STREAM),
      stop_(::eventfd(0, EFD_CLOEXEC))
{
    if (!stop_)
        throw std::runtime_error(std::string("USB adapter: ") + std::strerror(errno));
    thread_ = std::thread([this] { serve(); });
}

Usb_Adapter::~Usb_Adapter()
{
    ::eventfd_write(stop_.get(), 1);
    thread_.join();
}

void Usb_Adapter::serve()
{
    std::unique_ptr<Machine> machine;
    for (;;) {
        pollfd watched[]{{stop_.get(), POLLIN, 0}, machine ? machine->waits_for() : pollfd{listener_.get(), POLLIN, 0}};
        if (::poll(watched, std::size(watched), -1) < 0)
            continue; // EINTR; there is nothing else that could go wrong here
        if (watched[0].revents != 0)
            return;
        if (machine) {
            if (!machine->serve())
                machine.reset();
        } else if (File_Descriptor socket = listener_.accept()) {
            machine = std::make_unique<Machine>(std::move(socket), devices_);
        }
    }
}

}
