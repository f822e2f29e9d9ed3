#include "controller/qml_types.h"

#include "config/streaming_choices.h"
#include "controller/connection_state.h"
#include "controller/feedback_status.h"
#include "controller/vr_list_model.h"

#include <QtQml>

void registerControllerTypes()
{
    const char *const module = "ORBManager";
    qmlRegisterUncreatableType<VRListModel>(module, 1, 0, "VRListModel",
                                            QStringLiteral("the controller has it, as vrLists"));
    qmlRegisterUncreatableMetaObject(connection::staticMetaObject, module, 1, 0, "ConnectionState",
                                     QStringLiteral("orbconnection has it, as state"));
    qmlRegisterUncreatableType<FeedbackStatus>(module, 1, 0, "FeedbackStatus",
                                               QStringLiteral("there is one, called orbfeedback"));
    qmlRegisterSingletonType<StreamingChoices>(
        module, 1, 0, "StreamingChoices",
        [](QQmlEngine *, QJSEngine *) -> QObject * { return new StreamingChoices; });
}
