// What the controller writes, and what is said when it cannot.
#include "base/clock.h"
#include "base/file_io.h"
#include "config/config_manager.h"
#include "config/recent_headsets.h"
#include "controller/connection_flow.h"
#include "controller/feedback.h"
#include "controller/feedback_status.h"
#include "controller/orb_dependencies.h"
#include "controller/orb_manager.h"
#include "controller/unwritten_files.h"
#include "steamvr/steam_manager.h"
#include "sysinfo/system_info.h"

#include <QDebug>
#include <QPointer>

void ORBManager::watchWriting()
{
    unwritten_ = new UnwrittenFiles(deps_->clock(), this);
    deps_->config().setNotWritten(
        [this](StoredFile file, WriteResult result) { unwritten_->tell(file, result); });
    connect(unwritten_, &UnwrittenFiles::toast, this, &ORBManager::showToast);
    connect(&deps_->steam(), &SteamManager::driverNotRegistered, unwritten_,
            &UnwrittenFiles::driverMissing);
    connect(this, &ORBManager::showToast, unwritten_,
            [this](const QString &, int duration) { unwritten_->otherToast(duration); });
}

void ORBManager::storeRecentHeadsets()
{
    const auto store = recentHeld_ ? recent_headsets::add : recent_headsets::save;
    unwritten_->tell(StoredFile::KnownHeadsets, store(deps_->dataDir(), flow_->recentHeadsets()));
}

void ORBManager::sendFeecback(QString content, QString id)
{
    const QString path = deps_->dataDir() + QStringLiteral("/feedback.json");
    const QByteArray document = feedback::document(content, id, deps_->system().toJson());
    if (replaceFile(path, document) != WriteResult::Ok) {
        qInfo("feedback.json cannot be written");
        feedback_->set(FeedbackStatus::NotWritten);
        return;
    }
    feedback_->set(FeedbackStatus::Sending);
    deps_->upload(path, feedback::name(deps_->clock().now(), flow_->knownSerial(), id),
                  [status = QPointer<FeedbackStatus>(feedback_)](bool taken) {
                      if (status)
                          status->set(taken ? FeedbackStatus::Sent : FeedbackStatus::Kept);
                  });
}
