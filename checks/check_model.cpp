#include "checks/check_model.h"

#include <QCoreApplication>
#include <QtQml>

#include <algorithm>

using checks::Check;
using checks::Evidence;
using checks::Finding;
using checks::Surface;

namespace {

QString translated(const char *source)
{
    return *source ? QCoreApplication::translate("Checks", source) : QString();
}

// Puts the values into the places %1 to %9. They come from outside and may hold
// such marks themselves.
QString filled(const QString &text, const std::vector<Evidence> &evidence)
{
    QString result;
    for (int i = 0; i < text.size(); ++i) {
        const int place =
            text[i] == QLatin1Char('%') && i + 1 < text.size() ? text[i + 1].digitValue() : -1;
        if (place < 1 || place > static_cast<int>(evidence.size())) {
            result += text[i];
            continue;
        }
        result += evidence[place - 1].value;
        ++i;
    }
    return result;
}

QVariantList pairs(const std::vector<Evidence> &evidence)
{
    QVariantList result;
    for (const Evidence &fact : evidence) {
        result.append(QVariantMap{{QStringLiteral("label"), translated(fact.label)},
                                  {QStringLiteral("value"), fact.value}});
    }
    return result;
}

bool sameEvidence(const Finding &a, const Finding &b)
{
    return std::equal(a.evidence.begin(), a.evidence.end(), b.evidence.begin(), b.evidence.end(),
                      [](const Evidence &x, const Evidence &y) {
                          return x.label == y.label && x.value == y.value;
                      });
}

bool has(const std::vector<Finding> &findings, const Finding &one)
{
    return std::any_of(findings.begin(), findings.end(),
                       [&](const Finding &other) { return other.check == one.check; });
}

} // namespace

void FindingList::show(const std::vector<Finding> &findings)
{
    const int before = count();
    drop(findings);
    for (int row = 0; row < static_cast<int>(findings.size()); ++row) {
        const Finding &finding = findings[row];
        if (row < count() && findings_[row].check == finding.check) {
            if (sameEvidence(findings_[row], finding))
                continue;
            findings_[row] = finding;
            emit dataChanged(index(row), index(row));
            continue;
        }
        // Two that changed places: the later one comes anew.
        const auto later = std::find_if(findings_.begin() + row, findings_.end(),
                                        [&](const Finding &f) { return f.check == finding.check; });
        if (later != findings_.end()) {
            const int from = static_cast<int>(later - findings_.begin());
            beginRemoveRows({}, from, from);
            findings_.erase(later);
            endRemoveRows();
        }
        beginInsertRows({}, row, row);
        findings_.insert(findings_.begin() + row, finding);
        endInsertRows();
    }
    if (count() != before)
        emit countChanged();
}

// Takes away what is not found any more.
void FindingList::drop(const std::vector<Finding> &findings)
{
    for (int row = count() - 1; row >= 0; --row) {
        if (has(findings, findings_[row]))
            continue;
        beginRemoveRows({}, row, row);
        findings_.erase(findings_.begin() + row);
        endRemoveRows();
    }
}

int FindingList::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant FindingList::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= count())
        return {};
    const Finding &finding = findings_[index.row()];
    const Check &check = *finding.check;
    switch (role) {
    case Identifier:
        return QString::fromLatin1(check.id);
    case SeverityRole:
        return static_cast<int>(check.severity);
    case Title:
        return filled(translated(check.title), finding.evidence);
    case Text:
        return filled(translated(check.text), finding.evidence);
    case EvidenceRole:
        return pairs(finding.evidence);
    case ActionRole:
        return check.action.kind;
    case ActionLabel:
        return translated(check.action.label);
    case Blocks:
        return check.blocks ? static_cast<int>(*check.blocks) : -1;
    case SurfaceRole:
        return static_cast<int>(check.surface);
    default:
        return {};
    }
}

QHash<int, QByteArray> FindingList::roleNames() const
{
    return {{Identifier, "identifier"},
            {SeverityRole, "severity"},
            {Title, "title"},
            {Text, "text"},
            {EvidenceRole, "evidence"},
            {ActionRole, "action"},
            {ActionLabel, "actionLabel"},
            {Blocks, "blocks"},
            {SurfaceRole, "surface"}};
}

void FindingList::act(int row)
{
    if (row >= 0 && row < count())
        emit acted(findings_[row].check->action);
}

CheckModel::CheckModel(QObject *parent) : FindingList(parent)
{
    for (const FindingList *part : {&foremost_, &others_})
        connect(part, &FindingList::acted, this, &FindingList::acted);
}

void CheckModel::showAll(const std::vector<Finding> &findings)
{
    std::vector<Finding> cards;
    std::copy_if(findings.begin(), findings.end(), std::back_inserter(cards),
                 [](const Finding &f) { return f.check->surface == Surface::Card; });
    const auto second = cards.begin() + (cards.empty() ? 0 : 1);
    show(findings);
    foremost_.show({cards.begin(), second});
    others_.show({second, cards.end()});
}

void CheckModel::setAsking(bool asking)
{
    if (asking == asking_)
        return;
    asking_ = asking;
    emit askingChanged();
}

void registerCheckTypes()
{
    qmlRegisterUncreatableMetaObject(checks::staticMetaObject, "ORBManager", 1, 0, "Checks",
                                     QStringLiteral("only its enums are of use"));
}
