#pragma once

#include "../unit/bus_device.h"
#include "unix_listener.h"

#include <thread>

namespace zavra::simulator
{

/// A bus behind a USB-to-I2C adapter, to be plugged into a virtual machine: it speaks the usbredir protocol over a Unix
/// socket, and what it understands as a USB device is what Linux' driver i2c-tiny-usb says. It serves one machine at a
/// time, the next one when that has gone, in a thread of its own.
///
///     Usb_Adapter adapter{"adapter.socket", bench.devices()};
///
///     qemu-system-arm ... -device qemu-xhci -chardev socket,id=adapter,path=adapter.socket -device
///     usb-redir,chardev=adapter
///
/// The driver reports ENXIO as that. After any other error it reports EIO: the adapter stalls, and after ETIMEDOUT it
/// does not answer at all until the driver gives up, which takes two seconds.
class Usb_Adapter
{
public:
    /// Serves from now on. Takes over the socket of a server that died.
    /// @throws std::runtime_error  when another server is alive there, or the socket cannot be made
    Usb_Adapter(const std::filesystem::path& path, Bus_Devices devices);

    /// Unplugs it.
    ~Usb_Adapter();

    Usb_Adapter(const Usb_Adapter&) = delete;
    Usb_Adapter& operator=(const Usb_Adapter&) = delete;

private:
    void serve();

    Bus_Devices devices_;
    Unix_Listener listener_;
    File_Descriptor stop_;
    std::thread thread_;
};

}
