#include "usb/usb_watcher.h"

#include "usb/usb_identity.h"

UsbWatcher::UsbWatcher(const std::function<void()> &changed)
    : messages_([changed](const QString &interfacePath) {
          if (usb_identity::isHeadset(interfacePath))
              changed();
      })
{
}
