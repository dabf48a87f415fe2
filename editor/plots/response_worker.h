// Computes frequency responses on a thread of its own.
//
// The window's thread asks at each refresh and takes what is ready; the thread never touches the
// window.  It sleeps on a condition variable until it is asked for something new.

#pragma once

#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

#include "curves/filter_response.h"
#include "editor/plots/plot_frame.h"

namespace tarquil {

// Gains in dB of one filter at the response_frequencies.
using Response = std::vector<double>;

// 20 Hz to 20 kHz at equal ratios.
const std::vector<double>& response_frequencies();

// The response as a line in `frame`, whose x are frequencies.
std::vector<Point> response_points(const PlotFrame& frame, const Response& response);

class ResponseWorker {
  public:
    ResponseWorker();
    ResponseWorker(const ResponseWorker&) = delete;
    ResponseWorker& operator=(const ResponseWorker&) = delete;
    // Waits for the filter that is being computed.
    ~ResponseWorker();

    // The last response of filter `index` that is ready, flat until there is one; asks for a new
    // one when `filter` is not what it was computed from.  `index` names who asks, 0..MAX_FILTERS.
    const Response& get(unsigned index, const FilterSettings& filter);

    // Takes over what is ready; true when there was something.
    bool refresh();

    // Blocks until everything asked for is there: for pictures and tests.
    void wait();

    static constexpr unsigned MAX_FILTERS = 16;

  private:
    struct Slot {
        FilterSettings asked;
        Response response;
        bool is_asked = false;
    };

    void run();

    // of the window's thread
    Slot slots[MAX_FILTERS];

    // between both, under the mutex
    std::mutex mutex;
    std::condition_variable wake;
    std::condition_variable ready;
    std::map<unsigned, FilterSettings> wanted;
    std::map<unsigned, Response> computed;
    bool is_busy = false;
    bool stops = false;

    std::thread thread;
};

} // namespace tarquil
