// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

/// Times contenders in turn, round by round, so that a machine that grows slower slows all of them.
class Bench
{
public:
    struct Contender {
        QString name;
        std::function<void()> once;
        std::function<void()> prepare;
        std::vector<double> microseconds = {};
    };

    /// `prepare` is called before each round of this contender, and is not timed.
    void add(
        const QString &name, std::function<void()> once, std::function<void()> prepare = [] {})
    {
        m_contenders.push_back({name, std::move(once), std::move(prepare)});
    }

    void run(int rounds, int perRound)
    {
        using clock = std::chrono::steady_clock;
        for (int round = -1; round < rounds; ++round) { // round -1 warms up
            for (Contender &contender : m_contenders) {
                contender.prepare();
                for (int i = 0; i < perRound; ++i) {
                    const auto start = clock::now();
                    contender.once();
                    const std::chrono::duration<double, std::micro> taken = clock::now() - start;
                    if (round >= 0)
                        contender.microseconds.push_back(taken.count());
                }
            }
        }
    }

    double median(const QString &name) const { return quantile(name, 0.5); }

    /// One JSON object on the standard output: figures per contender, the ratios asked for, and figures that
    /// stand alone, objects with "what", "value", "unit", "reach" and "detail".
    void print(const QString &title, const std::vector<std::tuple<QString, QString, double>> &reaches,
               const QJsonArray &absolutes = {}) const
    {
        QJsonObject figures;
        for (const Contender &contender : m_contenders)
            figures[contender.name] = QJsonObject{{"samples", int(contender.microseconds.size())},
                                                  {"median_us", median(contender.name)},
                                                  {"p99_us", quantile(contender.name, 0.99)},
                                                  {"min_us", quantile(contender.name, 0)}};
        QJsonArray ratios;
        for (const auto &[over, under, reach] : reaches)
            ratios += QJsonObject{
                {"of", over}, {"to", under}, {"ratio", median(over) / median(under)}, {"reach", reach}};
        const QJsonObject report{
            {"title", title}, {"figures", figures}, {"ratios", ratios}, {"absolutes", absolutes}};
        std::puts(QJsonDocument(report).toJson(QJsonDocument::Compact).constData());
    }

private:
    double quantile(const QString &name, double q) const
    {
        for (const Contender &contender : m_contenders) {
            if (contender.name != name)
                continue;
            auto sorted = contender.microseconds;
            std::sort(sorted.begin(), sorted.end());
            return sorted[std::min(sorted.size() - 1,
                                   static_cast<size_t>(q * static_cast<double>(sorted.size())))];
        }
        return 0;
    }

    std::vector<Contender> m_contenders;
};
