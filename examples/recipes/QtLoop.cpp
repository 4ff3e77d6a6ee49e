#include <QCoreApplication>
#include <QMetaObject>

#include "vxprivacy/services/core/Services.h"

int run(vx::services::Services& services, QCoreApplication& application) {
    QObject poller; // lives on the application's thread; what is queued for it goes with it
    services.setWakeUp([&] {
        QMetaObject::invokeMethod(
            &poller, [&] { services.poll(); }, Qt::QueuedConnection);
    });
    services.poll();
    const int status = application.exec();
    services.setWakeUp(nullptr);
    return status;
}
