#pragma once

#include <QtGlobal>

/// The control requests of a device, apart from its bytes, so that a file can stand for a device. Any thread.
class DeviceControl {
public:
    virtual ~DeviceControl() = default;

    /// As ioctl(): `argument` is a number or the address of what the request reads or fills in; negative,
    /// with errno set, if the request fails.
    virtual int request(int descriptor, unsigned long code, quintptr argument) = 0;
};

/// Hands the requests to the kernel.
class KernelDeviceControl final : public DeviceControl {
public:
    int request(int descriptor, unsigned long code, quintptr argument) override;
};
