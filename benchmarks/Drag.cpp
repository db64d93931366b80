#include "Benchmarks.h"
#include "Dragger.h"
#include "Wakefulness.h"

#include <algorithm>
#include <map>
#include <memory>

namespace klova::bench {
namespace {

constexpr int kRounds = 6;
constexpr int kCountedRounds = 2;
constexpr double kFrame = 16; // milliseconds that a picture stays on the screen

const char* nameOf(Mover mover) {
    return mover == Mover::bare ? "bare program" : "the manager's own drag";
}

/// Several drags as one; the worst of what is at its end.
void add(DragResult& sum, const DragResult& one) {
    sum.delays.insert(sum.delays.end(), one.delays.begin(), one.delays.end());
    sum.behindAtEnd = std::max(sum.behindAtEnd, one.behindAtEnd);
    sum.offAtEnd = std::max(sum.offAtEnd, one.offAtEnd);
}

struct Series {
    DragResult all;
    Samples moverTime, bothTime, moves, requests;
};

using Results = std::map<Mover, Series>;

/// In each round every mover drags once, for half a second, in an order drawn anew.
Results dragInTurns(Run& run, std::vector<std::unique_ptr<Dragger>>& draggers, int rate) {
    Results results;
    const int rounds = std::max(2, run.rounds(kRounds));
    const DragPath path = rate == 1000 ? DragPath(2, 242) : DragPath(10, 392);
    const Wakefulness awake;
    for (int round = 0; round < rounds; ++round) {
        std::ranges::shuffle(draggers, run.random);
        for (auto& dragger : draggers) {
            const auto result = dragger->drag(path, rate);
            auto& series = results[dragger->options().mover];
            add(series.all, result);
            series.moves.push_back(result.moves);
            series.moverTime.push_back(result.moverTime);
            series.bothTime.push_back(result.moverTime + result.managerTime);
        }
    }
    for (int round = 0; round < kCountedRounds; ++round)
        for (auto& dragger : draggers)
            results[dragger->options().mover].requests.push_back(
                dragger->drag(path, rate, true).requests);
    return results;
}

/// A pixel a step: what passes in a delay is what the window is behind.
Samples inPixels(Samples delays, int rate) {
    for (auto& delay : delays)
        delay *= rate / 1000.0;
    return delays;
}

void report(Report& report, const std::string& name, int rate, bool slowClient,
            const Results& results) {
    const auto& klova = results.at(Mover::klova);
    const auto& bare = results.at(Mover::bare);
    for (const auto reference : {Mover::bare, Mover::manager})
        report.compare(name + "lag against " + nameOf(reference), "px",
                       inPixels(klova.all.delays, rate),
                       inPixels(results.at(reference).all.delays, rate), std::nullopt);
    report.add({.name = name + "farthest behind",
                .unit = "ms",
                .value = percentile(klova.all.delays, 1),
                .p99 = percentile(klova.all.delays, 0.99),
                .goal = slowClient ? std::nullopt : std::optional(kFrame)});
    report.add(
        {.name = name + "off at the end", .unit = "px", .value = klova.all.offAtEnd, .goal = 0});
    report.add({.name = name + "from last motion to last move",
                .unit = "ms",
                .value = klova.all.behindAtEnd,
                .goal = kFrame});
    if (slowClient)
        return; // what follows does not depend on the client
    report.compare(name + "processor a step against bare program", "µs", klova.moverTime,
                   bare.moverTime, std::nullopt);
    report.compare(name + "processor a step, with manager, against its own drag", "µs",
                   klova.bothTime, results.at(Mover::manager).bothTime, std::nullopt);
    for (const auto reference : {Mover::bare, Mover::manager})
        report.compare(name + "requests a step against " + nameOf(reference), "", klova.requests,
                       results.at(reference).requests, std::nullopt);
    report.compare(name + "moves a step against the manager's own drag", "", klova.moves,
                   results.at(Mover::manager).moves, std::nullopt);
}

void measure(Run& run, const std::string& manager, bool slowClient) {
    std::vector<std::unique_ptr<Dragger>> draggers;
    for (const int rate : {1000, 8000}) {
        std::string name = "drag, " + manager;
        name += rate == 1000 ? ", 1 kHz" : ", 8 kHz";
        name += slowClient ? ", slow client: " : ", quick client: ";
        if (!run.wants(name))
            continue;
        if (draggers.empty())
            for (const auto mover : {Mover::klova, Mover::bare, Mover::manager})
                draggers.push_back(std::make_unique<Dragger>(
                    DraggerOptions{mover, manager, slowClient}, run.programs));
        report(run.report, name, rate, slowClient, dragInTurns(run, draggers, rate));
    }
}

} // namespace

void measureDrag(Run& run) {
    for (const std::string manager : {"openbox", "xfwm4"})
        for (const bool slowClient : {false, true})
            measure(run, manager, slowClient);
}

} // namespace klova::bench
