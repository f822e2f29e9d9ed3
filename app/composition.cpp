#include "app/composition.h"

#include "base/clock.h"
#include "checks/check_model.h"
#include "cloud/cloud_host.h"
#include "cloud/http_manager.h"
#include "cloud/installer_start.h"
#include "cloud/orb_update.h"
#include "config/config_manager.h"
#include "controller/changes_model.h"
#include "controller/connection_status.h"
#include "controller/feedback_status.h"
#include "controller/orb_dependencies.h"
#include "controller/orb_manager.h"
#include "controller/qml_types.h"
#include "controller/stage_model.h"
#include "controller/unwritten_files.h"
#include "controller/usage_switch.h"
#include "link/sys_manager.h"
#include "pc/downloaded_program.h"
#include "qml/resources.h"
#include "res/resources.h"
#include "session/change_record.h"
#include "steamvr/steam_manager.h"
#include "sysinfo/system_info.h"
#include "ui/wait_notice.h"
#include "usb/adb_manger.h"

#include <QDebug>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QLocale>
#include <QMetaEnum>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QStandardPaths>

#include <memory>
#include <utility>

namespace {

QString dataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
}

// Each service is made when the controller asks for it first.
class ProcessWideServices final : public OrbDependencies
{
public:
    explicit ProcessWideServices(std::unique_ptr<UsageSwitch> usage) : usage_(std::move(usage)) {}

    Clock &clock() override { return Clock::system(); }
    ConfigManager &config() override { return ConfigManager::instance(); }
    SteamManager &steam() override { return SteamManager::instance(); }
    SystemInfo &system() override { return SystemInfo::instance(); }
    HeadsetLink &link() override { return SysManager::instance(); }
    AdbManger &adb() override { return AdbManger::instance(); }
    QString applicationDir() const override { return QCoreApplication::applicationDirPath(); }
    QString dataDir() const override { return dataFolder(); }
    void openUrl(const QUrl &url) override { QDesktopServices::openUrl(url); }
    void report(const QString &eventId, const QJsonObject &extraData) override
    {
        if (usage_->isOn())
            HttpManager::instance().addEvent(eventId, extraData);
    }
    void sendEvents() override { HttpManager::instance().sendEvents(false); }
    void upload(const QString &path, const QString &fileName,
                std::function<void(bool taken)> done) override
    {
        HttpManager::instance().uploadFile(path, fileName, HttpManager::AfterUpload::Remove,
                                           std::move(done));
    }

private:
    const std::unique_ptr<UsageSwitch> usage_;
};

ORBUpdate *makeUpdate(QGuiApplication *app)
{
    ORBUpdate::Dependencies dependencies;
    dependencies.host = cloud::host();
    dependencies.dataDir = dataFolder();
    dependencies.start = [](const QString &path) {
        startInstaller(path, Clock::system(), &downloaded_program::open);
    };
    dependencies.mark = &downloaded_program::mark;
    dependencies.signer = cloud::installerSigner();
    dependencies.signerOf = &downloaded_program::signerOf;
    dependencies.peerCheck = cloud::builtPeerCheck();
    dependencies.askForProxies = &ProxyFinder::askSystem;
    return new ORBUpdate(dependencies, app);
}

} // namespace

Composition::Composition(const QLocale &locale, QGuiApplication *app)
{
    qmlRegisterUncreatableType<ORBManager>("ORBManager", 1, 0, "ORBManagerCLS",
                                           QStringLiteral("there is one, called orb"));
    registerControllerTypes();
    registerCheckTypes();
    qInfo().noquote().nospace() << "json language: "
                                << QMetaEnum::fromType<QLocale::Language>().valueToKey(
                                       locale.language());
    long_wait::setProcessTell(wait_notice::byProcess(QCoreApplication::applicationFilePath()));
    SysManager::setLookForHolder(control_port::lookForHolder);
    SysManager::setLookForPeer(control_port::lookForPeer);
    SysManager::setRestartHandler([] { SteamManager::instance().restartSteamVR(); });
    // Made before, and so there longer than, whoever tells it of changes.
    ChangeRecord &record = ChangeRecord::instance();
    ConfigManager::instance().setOutsideRecord(record.callbacks());
    AdbManger::setBeforeForwardsGo(
        [&record](const QStringList &forwards) { record.beforeForwardsGo(forwards); });
    ConfigManager::instance().setCableProbe(&SystemInfo::hasVirtualCable);
    auto usage =
        std::make_unique<UsageSwitch>(dataFolder(), [] { HttpManager::instance().forgetEvents(); });
    usage_ = usage.get();
    orb_ = new ORBManager(std::make_unique<ProcessWideServices>(std::move(usage)), app);
    QObject::connect(usage_, &UsageSwitch::notKept, &orb_->unwritten(), [orb = orb_](auto result) {
        orb->unwritten().tell(StoredFile::UsageChoice, result);
    });
    update_ = makeUpdate(app);
    changes_ = new ChangesModel(record, orb_);
    stageModel_ = new StageModel(orb_->stages(), orb_);
    QObject::connect(app, &QCoreApplication::aboutToQuit, app, [update = update_] {
        HttpManager::instance().abortRequests();
        update->abortRequests();
    });
}

Composition::~Composition()
{
    delete orb_;
    delete update_;
}

void Composition::publish(QQmlApplicationEngine &engine) const
{
    engine.rootContext()->setContextProperty(QStringLiteral("orb"), orb_);
    engine.rootContext()->setContextProperty(QStringLiteral("orbupdate"), update_);
    engine.rootContext()->setContextProperty(QStringLiteral("orbconnection"), &orb_->status());
    engine.rootContext()->setContextProperty(QStringLiteral("orbusage"), usage_);
    engine.rootContext()->setContextProperty(QStringLiteral("orbrecord"), changes_);
    engine.rootContext()->setContextProperty(QStringLiteral("orbfeedback"), &orb_->feedback());
    engine.rootContext()->setContextProperty(QStringLiteral("orbstages"), stageModel_);
    engine.rootContext()->setContextProperty(QStringLiteral("orbchecks"), &orb_->findings());
}

void Composition::windowIsThere() const
{
    update_->goOnline();
}

void Composition::tellOfCrash() const
{
    constexpr int duration = 6000; // ms
    emit orb_->showToast(QObject::tr("上次运行意外中断，遗留的状态已恢复"), duration);
}

void Composition::endSession() const
{
    orb_->endSession();
}

const ConnectionStages &Composition::stages() const
{
    return orb_->stages();
}

void initProgramResources()
{
    qml::initResources();
    res::initResources();
}
