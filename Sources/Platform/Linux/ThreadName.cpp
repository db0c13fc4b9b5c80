#include "Foundation/ThreadName.h"

#include <pthread.h>

void nameCurrentThread(const QString &name) {
    // The kernel keeps 15 bytes and refuses more.
    ::pthread_setname_np(::pthread_self(), name.toUtf8().left(15).constData());
}
