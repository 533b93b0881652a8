// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

#include "FolderComparison.h"

#include "config/ConfigCollector.h"
#include "config/ConfigDiff.h"

#include <QtCore/QMap>

#include <algorithm>
#include <utility>

namespace browser {

namespace {

int differencesOf(const Configuration &first, const Configuration &second)
{
    int count = 0;
    const vn::ConfigDiff sections =
        vn::configDiff(mapOf(first.text(), first.form()), mapOf(second.text(), second.form()));
    for (const vn::ConfigSectionDifference &section : sections)
        count += int(std::count_if(section.keys.begin(), section.keys.end(), [](const auto &key) {
            return key.kind != vn::ConfigKeyDifference::Kind::NullAgainstEmpty;
        }));
    return count;
}

} // namespace

FolderComparison::FolderComparison(QString first, QString second, QObject *parent)
    : QThread(parent)
    , m_first(std::move(first))
    , m_second(std::move(second))
{
}

FolderComparison::~FolderComparison()
{
    stop();
    wait();
}

QMap<QString, Configuration> FolderComparison::read(const QString &folder)
{
    using Status = vn::ConfigCollector::Status;
    vn::ConfigCollector::Options options;
    options.recursive = true;
    options.order = vn::ConfigCollector::Order::Name;
    options.stop = &m_isStopped;
    vn::ConfigCollector collector({folder}, options);
    QMap<QString, Configuration> found;
    while (const auto next = collector.next()) {
        if (next->status == Status::NoConfiguration)
            continue;
        if (next->status != Status::Configuration) {
            ++m_unreadable;
            continue;
        }
        if (next->factoryIp.isEmpty() || found.contains(next->factoryIp))
            ++m_leftOut;
        if (!next->factoryIp.isEmpty())
            found.insert(next->factoryIp,
                         Configuration(next->path, next->entry, std::max(next->index, 0),
                                       next->bytes, Configuration::Form::Configuration));
    }
    return found;
}

void FolderComparison::run()
{
    const QMap<QString, Configuration> first = read(m_first);
    const QMap<QString, Configuration> second = read(m_second);
    const auto add = [this](const QString &address, ComparedCamera::State state) -> auto &
    {
        m_cameras.emplace_back();
        m_cameras.back().address = address;
        m_cameras.back().state = state;
        return m_cameras.back();
    };
    for (auto camera = first.cbegin(); camera != first.cend() && !m_isStopped; ++camera) {
        const auto other = second.constFind(camera.key());
        if (other == second.cend()) {
            add(camera.key(), ComparedCamera::State::OnlyInFirst).first = *camera;
            continue;
        }
        ComparedCamera &both = add(camera.key(), ComparedCamera::State::Same);
        both.differences = differencesOf(*camera, *other);
        if (both.differences > 0)
            both.state = ComparedCamera::State::Different;
        both.first = *camera;
        both.second = *other;
    }
    for (auto camera = second.cbegin(); camera != second.cend(); ++camera)
        if (!first.contains(camera.key()))
            add(camera.key(), ComparedCamera::State::OnlyInSecond).second = *camera;
}

} // namespace browser
