#include "Loudness.h"
#include "Platform/Linux/Pulse/PulseSystemSounds.h"
#include "Recipes.h"
#include "WaveFile.h"

#include <QFile>
#include <QtEndian>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <numbers>
#include <numeric>

namespace {
constexpr int headerSize = 44;

QByteArray fileContent(const std::string &name) {
    QFile file(QStringLiteral(":/Sounds/%1.wav").arg(QString::fromStdString(name)));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll();
}

Samples samplesOf(const QByteArray &file) {
    Samples samples;
    for (qsizetype place = headerSize; place + 1 < file.size(); place += 2)
        samples.push_back(qFromLittleEndian<qint16>(file.constData() + place) / 32768.0);
    return samples;
}

double peak(Samples::const_iterator begin, Samples::const_iterator end) {
    return std::accumulate(
        begin, end, 0.0, [](double highest, double sample) { return std::max(highest, std::abs(sample)); });
}

/// The discrete Fourier transform; the size is a power of two.
std::vector<std::complex<double>> transformed(const std::vector<std::complex<double>> &values) {
    const size_t size = values.size();
    if (size == 1)
        return values;
    std::vector<std::complex<double>> even(size / 2), odd(size / 2);
    for (size_t index = 0; index < size / 2; ++index) {
        even[index] = values[2 * index];
        odd[index] = values[2 * index + 1];
    }
    even = transformed(even);
    odd = transformed(odd);
    std::vector<std::complex<double>> result(size);
    for (size_t index = 0; index < size / 2; ++index) {
        const double angle = -2 * std::numbers::pi * static_cast<double>(index) / static_cast<double>(size);
        const auto turned = std::polar(1.0, angle) * odd[index];
        result[index] = even[index] + turned;
        result[index + size / 2] = even[index] - turned;
    }
    return result;
}

/// Level of third-octave bands from 50 Hz up, in decibels relative to the loudest band, at least -40.
using Bands = std::array<double, 24>;

Bands bands(const Samples &samples) {
    constexpr size_t size = 1 << 16;
    std::vector<std::complex<double>> values(samples.begin(), samples.end());
    values.resize(size);
    const auto spectrum = transformed(values);
    Bands energies {};
    for (size_t index = 1; index < size / 2; ++index) {
        const double frequency = static_cast<double>(index) * sampleRate / size;
        const double band = 3 * std::log2(frequency / 50);
        if (band >= 0 && band < static_cast<double>(energies.size()))
            energies[static_cast<size_t>(band)] += std::norm(spectrum[index]);
    }
    const double loudest = *std::max_element(energies.begin(), energies.end());
    for (double &energy : energies)
        energy = std::max(10 * std::log10(energy / loudest), -40.0);
    return energies;
}

double distance(const Bands &left, const Bands &right) {
    double sum = 0;
    for (size_t band = 0; band < left.size(); ++band)
        sum += (left[band] - right[band]) * (left[band] - right[band]);
    return std::sqrt(sum / static_cast<double>(left.size()));
}

TEST(SystemSoundFiles, MatchTheSynthesiser) {
    for (const Recipe &recipe : recipes())
        EXPECT_TRUE(fileContent(recipe.name).toStdString() == waveFile(render(recipe))) << recipe.name;
}

TEST(PulseSystemSounds, KnowsThemByTheirExactNames) {
    PulseConnection connection;
    PulseSystemSounds sounds(connection);
    for (const Recipe &recipe : recipes())
        EXPECT_TRUE(sounds.named(QString::fromStdString(recipe.name))) << recipe.name;
    for (const char *unknown : { "", "ping", "Trumpet", "../Sounds/Ping", "Ping.wav" })
        EXPECT_FALSE(sounds.named(QString::fromUtf8(unknown))) << unknown;
}

TEST(SystemSoundFiles, AreShortAndSmall) {
    qsizetype total = 0;
    for (const Recipe &recipe : recipes()) {
        const QByteArray file = fileContent(recipe.name);
        total += file.size();
        EXPECT_GE(samplesOf(file).size(), 0.6 * sampleRate) << recipe.name;
        EXPECT_LE(samplesOf(file).size(), 2.0 * sampleRate) << recipe.name;
    }
    EXPECT_LE(total, 2 * 1024 * 1024);
}

TEST(SystemSoundFiles, AreMonoAt48KilohertzIn16Bits) {
    for (const Recipe &recipe : recipes()) {
        const QByteArray file = fileContent(recipe.name);
        EXPECT_EQ(qFromLittleEndian<quint16>(file.constData() + 20), 1) << recipe.name;
        EXPECT_EQ(qFromLittleEndian<quint16>(file.constData() + 22), 1) << recipe.name;
        EXPECT_EQ(qFromLittleEndian<quint32>(file.constData() + 24), 48000u) << recipe.name;
        EXPECT_EQ(qFromLittleEndian<quint16>(file.constData() + 34), 16) << recipe.name;
        EXPECT_EQ(qFromLittleEndian<quint32>(file.constData() + 40), file.size() - headerSize) << recipe.name;
    }
}

TEST(Loudness, MatchesTheRecommendation) {
    Samples sine(10 * sampleRate);
    for (size_t index = 0; index < sine.size(); ++index)
        sine[index] = std::sin(2 * std::numbers::pi * 997 * static_cast<double>(index) / sampleRate);
    EXPECT_NEAR(loudness(sine), -3.01, 0.02);
}

TEST(SystemSoundFiles, AreEquallyLoud) {
    for (const Recipe &recipe : recipes())
        EXPECT_NEAR(loudness(samplesOf(fileContent(recipe.name))), -23, 0.5) << recipe.name;
}

TEST(SystemSoundFiles, AreNotClipped) {
    for (const Recipe &recipe : recipes()) {
        const Samples samples = samplesOf(fileContent(recipe.name));
        EXPECT_LE(peak(samples.begin(), samples.end()), 0.8) << recipe.name;
    }
}

TEST(SystemSoundFiles, BeginSoftlyAndLoopWithoutAClick) {
    constexpr auto millisecond = sampleRate / 1000;
    for (const Recipe &recipe : recipes()) {
        const Samples samples = samplesOf(fileContent(recipe.name));
        const double highest = peak(samples.begin(), samples.end());
        EXPECT_EQ(samples.front(), 0) << recipe.name;
        EXPECT_LE(peak(samples.begin(), samples.begin() + millisecond), 0.25 * highest) << recipe.name;
        EXPECT_LE(peak(samples.end() - 5 * millisecond, samples.end()), 0.001) << recipe.name;
    }
}

TEST(SystemSoundFiles, SoundDifferent) {
    std::vector<std::pair<std::string, Bands>> sounds;
    for (const Recipe &recipe : recipes())
        sounds.emplace_back(recipe.name, bands(samplesOf(fileContent(recipe.name))));
    for (size_t left = 0; left < sounds.size(); ++left) {
        for (size_t right = left + 1; right < sounds.size(); ++right)
            EXPECT_GE(distance(sounds[left].second, sounds[right].second), 5)
                << sounds[left].first << " and " << sounds[right].first;
    }
}
} // namespace
