#include "core/advice/score_maps.h"

#include "core/advice/board_cells.h"

#include <fftw3.h>

#include <algorithm>
#include <cmath>
#include <list>
#include <mutex>
#include <optional>
#include <thread>

namespace tavrix {

namespace {

// A spread this tight (mm, standard deviation along its widest axis) is one
// cell: the dart lands where it is aimed, shifted by the bias.
constexpr double pointSpread = 0.3;
// The kernel reaches this many standard deviations either side of the bias.
constexpr double kernelReach = 5;
// The variance (mm²) of a point spread evenly over a 1 mm cell, along each
// axis: the kernel takes it on, as the integral of the density over a whole
// cell is, to second order, the density of a spread wider by this much at the
// cell's centre.
constexpr double cellVariance = 1.0 / 12.0;
// Region transforms are large (62 of them per size); only the sizes most
// recently used keep theirs.
constexpr std::size_t cachedSizes = 2;

// FFTW's planner is not thread-safe; plans are made and destroyed under
// this lock, while executing them is safe from any thread.
std::mutex &plannerLock()
{
    static std::mutex lock;
    return lock;
}

// Sizes of 16 times a product of 2, 3 and 5 only: FFTW's plans made without
// measuring are fast for them, and the sizes lie 5 to 20 % apart, so that
// the spreads of one player's classes of aim often share one.
bool isFastSize(int n)
{
    if (n % 16 != 0)
        return false;
    for (const int p : {2, 3, 5})
        while (n % p == 0)
            n /= p;
    return n == 1;
}

int transformSize(int n)
{
    while (!isFastSize(n))
        ++n;
    return n;
}

struct FloatBuffer {
    float *data = nullptr;
    explicit FloatBuffer(std::size_t n) : data(fftwf_alloc_real(n)) {}
    ~FloatBuffer() { fftwf_free(data); }
    FloatBuffer(const FloatBuffer &) = delete;
    FloatBuffer &operator=(const FloatBuffer &) = delete;
};

struct ComplexBuffer {
    fftwf_complex *data = nullptr;
    explicit ComplexBuffer(std::size_t n) : data(fftwf_alloc_complex(n)) {}
    ~ComplexBuffer() { fftwf_free(data); }
    ComplexBuffer(const ComplexBuffer &) = delete;
    ComplexBuffer &operator=(const ComplexBuffer &) = delete;
};

// The normal distribution of a dart's offset from its aim, sampled on the
// cells of offsets d from (xLo, yLo) to (xHi, yHi), summing to 1.
struct Kernel {
    int xLo = 0;
    int xHi = 0;
    int yLo = 0;
    int yHi = 0;
    std::vector<double> weights; // row by row from yLo, x from xLo
};

Kernel makeKernel(const Spread &spread)
{
    Kernel kernel;
    const double a = std::max(0.0, spread.varX);
    const double c = std::max(0.0, spread.varY);
    const double b = spread.covXY;
    const double mean = (a + c) / 2;
    const double radius = std::sqrt((a - c) * (a - c) / 4 + b * b);
    const double widest = mean + radius;
    if (std::sqrt(widest) < pointSpread) {
        kernel.xLo = kernel.xHi = int(std::lround(spread.biasX));
        kernel.yLo = kernel.yHi = int(std::lround(spread.biasY));
        kernel.weights = {1.0};
        return kernel;
    }
    const double kxx = a + cellVariance;
    const double kyy = c + cellVariance;
    // A covariance is never more than the product of the deviations; the
    // clamp keeps a slightly inconsistent one from giving no density at all.
    const double limit = std::sqrt(a * c);
    const double kxy = std::clamp(b, -limit, limit);
    const double det = kxx * kyy - kxy * kxy;
    const double ixx = kyy / det;
    const double ixy = -kxy / det;
    const double iyy = kxx / det;

    const double reachX = kernelReach * std::sqrt(kxx);
    const double reachY = kernelReach * std::sqrt(kyy);
    kernel.xLo = int(std::floor(spread.biasX - reachX));
    kernel.xHi = int(std::ceil(spread.biasX + reachX));
    kernel.yLo = int(std::floor(spread.biasY - reachY));
    kernel.yHi = int(std::ceil(spread.biasY + reachY));
    const int width = kernel.xHi - kernel.xLo + 1;
    kernel.weights.resize(std::size_t(width) * (kernel.yHi - kernel.yLo + 1));
    double sum = 0;
    std::size_t i = 0;
    for (int y = kernel.yLo; y <= kernel.yHi; ++y) {
        const double ey = y - spread.biasY;
        for (int x = kernel.xLo; x <= kernel.xHi; ++x, ++i) {
            const double ex = x - spread.biasX;
            const double w = std::exp(-0.5 * (ixx * ex * ex + 2 * ixy * ex * ey + iyy * ey * ey));
            kernel.weights[i] = w;
            sum += w;
        }
    }
    for (double &w : kernel.weights)
        w /= sum;
    return kernel;
}

// The transform size that convolves the board with the kernel without
// wrapping round onto any aiming point of the grid.
int sizeFor(const Kernel &kernel)
{
    // A dart aimed at a lands at a + d: aims that can reach a board cell run
    // from -cellHalf - hi to cellHalf - lo; the grid's aims must not meet
    // them again one period on.
    const auto span = [](int lo, int hi) {
        return std::max(aimGridHalf, cellHalf - lo) - std::min(-aimGridHalf, -cellHalf - hi) + 1;
    };
    return transformSize(std::max(span(kernel.xLo, kernel.xHi), span(kernel.yLo, kernel.yHi)));
}

// The plans, work buffers and board transforms of one transform size.
// The buffers one thread transforms in.
struct Workspace {
    FloatBuffer real;
    ComplexBuffer spectrum;
    ComplexBuffer momentX;
    ComplexBuffer momentY;
    Workspace(std::size_t realCount, std::size_t complexCount)
        : real(realCount)
        , spectrum(complexCount)
        , momentX(complexCount)
        , momentY(complexCount)
    {
    }
};

struct SizeCache {
    int n = 0;
    std::size_t realCount = 0;
    std::size_t complexCount = 0;
    // Two threads share the regions' transforms, each in its own workspace.
    std::array<std::unique_ptr<Workspace>, 2> work;
    ComplexBuffer kernel;
    ComplexBuffer points;
    std::vector<std::unique_ptr<ComplexBuffer>> regions; // empty until asked for
    fftwf_plan forward = nullptr;
    fftwf_plan backward = nullptr;

    explicit SizeCache(int size)
        : n(size)
        , realCount(std::size_t(size) * size)
        , complexCount(std::size_t(size) * (size / 2 + 1))
        , work{std::make_unique<Workspace>(realCount, complexCount),
               std::make_unique<Workspace>(realCount, complexCount)}
        , kernel(complexCount)
        , points(complexCount)
    {
        {
            const std::lock_guard guard(plannerLock());
            forward = fftwf_plan_dft_r2c_2d(n, n, work[0]->real.data, work[0]->spectrum.data, FFTW_ESTIMATE);
            backward = fftwf_plan_dft_c2r_2d(n, n, work[0]->spectrum.data, work[0]->real.data, FFTW_ESTIMATE);
        }
        const std::vector<CellMass> &cells = boardCells().points;
        transformMasses(
            [&cells](auto &&put) {
                for (int i = 0; i < cellSide * cellSide; ++i)
                    put(i, cells[i]);
            },
            points, *work[0]);
    }
    ~SizeCache()
    {
        const std::lock_guard guard(plannerLock());
        fftwf_destroy_plan(forward);
        fftwf_destroy_plan(backward);
    }
    SizeCache(const SizeCache &) = delete;
    SizeCache &operator=(const SizeCache &) = delete;

    // The index in the real array of board position (x, y) mm, y up,
    // wrapped round the period.
    std::size_t at(int x, int y) const
    {
        return std::size_t((y % n + n) % n) * n + std::size_t((x % n + n) % n);
    }
    void clear(FloatBuffer &real) const { std::fill(real.data, real.data + realCount, 0.0f); }

    // body(first, last, workspace) over [0, count) in two halves, the
    // second on a thread of its own.
    template <typename Body>
    void inHalves(int count, Body body)
    {
        const int half = count / 2;
        std::jthread other([&] { body(half, count, *work[1]); });
        body(0, half, *work[0]);
    }

    // The transform of masses on the board's cells, each mass moved from
    // its cell's centre to its centroid: shifting a mass by m multiplies its
    // transform by exp(-i w.m), to first order 1 - i w.m, so the moments'
    // transforms times -i w join the shares'. `cells(put)` calls
    // put(cell index, mass) for every cell that holds anything.
    template <typename Cells>
    void transformMasses(Cells cells, ComplexBuffer &out, Workspace &w)
    {
        const auto transformOf = [&](auto part, ComplexBuffer &to) {
            clear(w.real);
            cells([&](int index, const CellMass &mass) {
                w.real.data[at(index % cellSide - cellHalf, index / cellSide - cellHalf)] = mass.*part;
            });
            fftwf_execute_dft_r2c(forward, w.real.data, to.data);
        };
        const ComplexBuffer &momentX = w.momentX;
        const ComplexBuffer &momentY = w.momentY;
        transformOf(&CellMass::share, out);
        transformOf(&CellMass::momentX, w.momentX);
        transformOf(&CellMass::momentY, w.momentY);
        const int columns = n / 2 + 1;
        const auto frequency = [this](int k) {
            // The highest frequency has no sign; it takes no moment.
            if (2 * k == n)
                return 0.0f;
            return float(2 * Pi * (2 * k < n ? k : k - n) / n);
        };
        for (int row = 0; row < n; ++row) {
            const float wy = frequency(row);
            for (int column = 0; column < columns; ++column) {
                const float wx = frequency(column);
                const std::size_t i = std::size_t(row) * columns + column;
                const float re = wx * momentX.data[i][0] + wy * momentY.data[i][0];
                const float im = wx * momentX.data[i][1] + wy * momentY.data[i][1];
                out.data[i][0] += im;
                out.data[i][1] -= re;
            }
        }
    }

    void computeRegions()
    {
        if (!regions.empty())
            return;
        const BoardCells &board = boardCells();
        std::vector<std::unique_ptr<ComplexBuffer>> transforms(regionCount);
        for (auto &transform : transforms)
            transform = std::make_unique<ComplexBuffer>(complexCount);
        inHalves(regionCount, [&](int first, int last, Workspace &w) {
            for (int region = first; region < last; ++region)
                transformMasses(
                    [&board, region](auto &&put) {
                        for (std::size_t i = board.start[region]; i < board.start[region + 1]; ++i)
                            put(board.cell[i], board.mass[i]);
                    },
                    *transforms[region], w);
        });
        regions = std::move(transforms);
    }

    // The kernel, reflected (a dart aimed at a lands at a + d, so the map at
    // a sums the board at a + d), into `kernel`.
    void transformKernel(const Kernel &k)
    {
        FloatBuffer &real = work[0]->real;
        clear(real);
        const int width = k.xHi - k.xLo + 1;
        for (int y = k.yLo; y <= k.yHi; ++y)
            for (int x = k.xLo; x <= k.xHi; ++x)
                real.data[at(-x, -y)] = float(k.weights[std::size_t(y - k.yLo) * width + (x - k.xLo)]);
        fftwf_execute_dft_r2c(forward, real.data, kernel.data);
    }

    // The inverse transform of source × kernel, cropped to the grid.
    AimMap convolved(const fftwf_complex *source, Workspace &w)
    {
        fftwf_complex *spectrum = w.spectrum.data;
        float *real = w.real.data;
        for (std::size_t i = 0; i < complexCount; ++i) {
            const float re = source[i][0] * kernel.data[i][0] - source[i][1] * kernel.data[i][1];
            const float im = source[i][0] * kernel.data[i][1] + source[i][1] * kernel.data[i][0];
            spectrum[i][0] = re;
            spectrum[i][1] = im;
        }
        fftwf_execute_dft_c2r(backward, spectrum, real);
        AimMap map;
        map.values.resize(std::size_t(aimGridSide) * aimGridSide);
        const float scale = 1.0f / float(realCount);
        for (int row = 0; row < aimGridSide; ++row) {
            const float *from = real + at(0, aimGridHalf - row);
            float *to = map.values.data() + std::size_t(row) * aimGridSide;
            for (int column = 0; column < aimGridSide; ++column) {
                const int x = column - aimGridHalf;
                const float value = from[x < 0 ? x + n : x] * scale;
                // Rounding leaves traces of -1e-7 where nothing can be hit.
                to[column] = std::max(value, 0.0f);
            }
        }
        return map;
    }
};

// A spread of one cell moves the board by the bias, without a transform:
// aim a takes the cell at a + d.
class CellShift {
public:
    explicit CellShift(const Kernel &kernel)
        : dx_(kernel.xLo)
        , dy_(kernel.yLo)
    {
        map_.values.assign(std::size_t(aimGridSide) * aimGridSide, 0.0f);
    }
    void put(int cellIndex, float value)
    {
        const int column = cellIndex % cellSide - cellHalf - dx_ + aimGridHalf;
        const int row = aimGridHalf - (cellIndex / cellSide - cellHalf - dy_);
        if (column >= 0 && column < aimGridSide && row >= 0 && row < aimGridSide)
            map_.values[std::size_t(row) * aimGridSide + column] = value;
    }
    AimMap take() { return std::move(map_); }

private:
    int dx_;
    int dy_;
    AimMap map_;
};

bool isOneCell(const Kernel &kernel)
{
    return kernel.weights.size() == 1;
}

} // namespace

struct ScoreMaps::Impl {
    std::list<std::unique_ptr<SizeCache>> sizes; // most recently used first

    SizeCache &cacheFor(int n)
    {
        for (auto it = sizes.begin(); it != sizes.end(); ++it) {
            if ((*it)->n == n) {
                sizes.splice(sizes.begin(), sizes, it);
                return *sizes.front();
            }
        }
        if (sizes.size() >= cachedSizes)
            sizes.pop_back();
        sizes.push_front(std::make_unique<SizeCache>(n));
        return *sizes.front();
    }
};

ScoreMaps::ScoreMaps()
    : impl_(std::make_unique<Impl>())
{
}

ScoreMaps::~ScoreMaps() = default;

AimMap ScoreMaps::expectedScore(const Spread &spread)
{
    const Kernel kernel = makeKernel(spread);
    if (isOneCell(kernel)) {
        const BoardCells &board = boardCells();
        CellShift shift(kernel);
        for (int i = 0; i < cellSide * cellSide; ++i)
            shift.put(i, board.points[i].share);
        return shift.take();
    }
    SizeCache &cache = impl_->cacheFor(sizeFor(kernel));
    cache.transformKernel(kernel);
    return cache.convolved(cache.points.data, *cache.work[0]);
}

std::vector<AimMap> ScoreMaps::regionChances(const Spread &spread)
{
    const Kernel kernel = makeKernel(spread);
    std::vector<AimMap> maps;
    maps.reserve(regionCount);
    if (isOneCell(kernel)) {
        const BoardCells &board = boardCells();
        for (int region = 0; region < regionCount; ++region) {
            CellShift shift(kernel);
            for (std::size_t i = board.start[region]; i < board.start[region + 1]; ++i)
                shift.put(board.cell[i], board.mass[i].share);
            maps.push_back(shift.take());
        }
        return maps;
    }
    SizeCache &cache = impl_->cacheFor(sizeFor(kernel));
    cache.computeRegions();
    cache.transformKernel(kernel);
    maps.resize(regionCount);
    cache.inHalves(regionCount, [&](int first, int last, Workspace &w) {
        for (int region = first; region < last; ++region)
            maps[region] = cache.convolved(cache.regions[region]->data, w);
    });
    return maps;
}

BoardPoint gridPointToBoard(int column, int row)
{
    return {(column - aimGridHalf) / mmPerUnit, (aimGridHalf - row) / mmPerUnit};
}

std::pair<int, int> boardToGridPoint(BoardPoint at)
{
    const auto clamped = [](double v) {
        return int(std::clamp<double>(std::round(v), 0, aimGridSide - 1));
    };
    return {clamped(at.x * mmPerUnit + aimGridHalf), clamped(aimGridHalf - at.y * mmPerUnit)};
}

int regionAt(BoardPoint at)
{
    const DartScore score = scoreFromXY(at.x, at.y);
    if (score.number == 25)
        return score.multiplier == 2 ? bullRegion : outerBullRegion;
    if (score.number < 1 || score.number > 20 || score.multiplier < 1 || score.multiplier > 3)
        return -1;
    return (score.multiplier - 1) * 20 + score.number - 1;
}

int regionPoints(int region)
{
    return regionScore(region).points();
}

bool regionIsDouble(int region)
{
    return regionScore(region).isDouble();
}

DartScore regionScore(int region)
{
    if (region == outerBullRegion)
        return {1, 25};
    if (region == bullRegion)
        return {2, 25};
    if (region < 0 || region >= outerBullRegion)
        return {0, 0};
    return {region / 20 + 1, region % 20 + 1};
}

BestAim bestAim(const AimMap &map)
{
    const std::vector<char> &inside = gridInside();
    BestAim best;
    bool found = false;
    for (std::size_t i = 0; i < inside.size(); ++i) {
        if (inside[i] && (!found || map.values[i] > best.value)) {
            found = true;
            best = {int(i % aimGridSide), int(i / aimGridSide), map.values[i]};
        }
    }
    return best;
}

} // namespace tavrix
