#include "Platform/Linux/Evdev/DeviceControl.h"

#include <sys/ioctl.h>

int KernelDeviceControl::request(int descriptor, unsigned long code, quintptr argument) {
    return ::ioctl(descriptor, code, argument);
}
