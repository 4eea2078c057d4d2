// Network streams, from a server of the test's own. Native only: the sound is encoded with the ffmpeg command.
#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstring>
#include <memory>
#include <mutex>
#include <random>
#include <thread>

#include "platform/worker.h"
#include "tests/eventually.h"
#include "tests/platform/http_server.h"
#include "tests/sound/encode.h"
#include "tests/sound/sound.h"

namespace hullrider {

namespace {

constexpr size_t kAll = ~size_t{0};

// Lets a server send only so many bytes, until the test allows more.
class Gate {
public:
    void Allow(size_t bytes) {
        const std::lock_guard lock(mutex_);
        allowed_ = bytes;
        changed_.notify_all();
    }
    void Close() {
        const std::lock_guard lock(mutex_);
        isClosed_ = true;
        changed_.notify_all();
    }
    // How many of the bytes may be sent by now, more than `sent`; 0 when it is closed.
    size_t WaitBeyond(size_t sent) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return isClosed_ || allowed_ > sent; });
        return isClosed_ ? 0 : allowed_;
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    size_t allowed_ = kAll;
    bool isClosed_ = false;
};

std::string Head(const std::string& more) {
    return "HTTP/1.0 200 OK\r\nicy-name:Tone Radio\r\n" + more + "\r\n";
}

// The sound with a title block after every `interval` bytes; `titles` are (place in the sound, block text).
std::string WithTitles(const std::string& sound, size_t interval,
                       const std::vector<std::pair<size_t, std::string>>& titles) {
    std::string stream;
    size_t next = 0;
    for (size_t at = 0; at + interval <= sound.size(); at += interval) {
        stream += sound.substr(at, interval);
        std::string title;
        if (next < titles.size() && titles[next].first <= at + interval) title = titles[next++].second;
        const size_t units = (title.size() + 15) / 16;
        stream += static_cast<char>(units) + title + std::string(units * 16 - title.size(), '\0');
    }
    return stream;
}

bool IsTone(const Samples& stereo, double hz) {
    const Samples mono = Left(stereo);
    return AmplitudeAt(mono, 44100, hz) > 0.3;
}

std::string Tags(HSTREAM stream, uint32_t kind) {
    const char* tags = BASS_ChannelGetTags(stream, kind);
    std::string lines;
    const bool isOneText = kind == BASS_TAG_META;
    for (; tags != nullptr && *tags != '\0'; tags = isOneText ? nullptr : tags + std::strlen(tags) + 1) {
        lines += (lines.empty() ? "" : "\n") + std::string(tags);
    }
    return lines;
}

}  // namespace

class NetworkSound : public SoundTest {
protected:
    void TearDown() override {
        SoundTest::TearDown();
        StopServing();
        BASS_SetConfig(BASS_CONFIG_NET_TIMEOUT, 10'000);
    }

    std::string Encoded(double hz, double seconds, const std::string& name = "tone.mp3",
                        const std::string& arguments = "-b:a 128k") {
        return folder_.Read(EncodeFile(Save("tone.wav", Tone(kRate, 2, hz, seconds)), folder_.At(name), arguments));
    }

    // Sends this, as far as the gate allows, and keeps the connection open.
    HttpServer::Answer Station(const std::string& head, const std::string& body) {
        return [this, head, body](const Socket& connection, const std::string&) {
            bool isThere = connection.Send(head);
            for (size_t sent = 0; isThere;) {
                const size_t allowed = gate_->WaitBeyond(sent < body.size() ? sent : kAll);
                if (allowed == 0) break;
                isThere = connection.Send(body.substr(sent, allowed - sent));
                sent = std::min(allowed, body.size());
            }
            return false;
        };
    }
    void Serve(std::map<std::string, HttpServer::Answer> answers) {
        server_ = std::make_unique<HttpServer>(std::move(answers));
    }
    void StopServing() {
        gate_->Close();
        server_.reset();
        gate_ = std::make_unique<Gate>();
    }
    HSTREAM Listen(const std::string& path = "/") {
        const std::string url = server_->Url(path);
        const HSTREAM stream =
            BASS_StreamCreateURL(url.c_str(), 0, BASS_SAMPLE_FLOAT | BASS_STREAM_STATUS, nullptr, nullptr);
        EXPECT_NE(stream, 0u) << path << ": " << BASS_ErrorGetCode();
        BASS_ChannelSetAttribute(stream, BASS_ATTRIB_VOL, 1.0F);
        EXPECT_TRUE(BASS_ChannelPlay(stream, false));
        return stream;
    }
    // Until it sounds; what is rendered meanwhile is dropped.
    static bool RenderUntilPlaying(HSTREAM stream) {
        return Eventually(
            [&] {
                Render(64);
                return BASS_ChannelIsActive(stream) == BASS_ACTIVE_PLAYING;
            },
            std::chrono::milliseconds(1));
    }
    static bool HasArrived(HSTREAM stream, size_t bytes) {
        return Eventually([&] { return BASS_StreamGetFilePosition(stream, BASS_FILEPOS_BUFFER) >= bytes; });
    }

    std::unique_ptr<Gate> gate_ = std::make_unique<Gate>();
    std::unique_ptr<HttpServer> server_;
};

TEST_F(NetworkSound, EveryCodecPlaysAtItsPitchAndSaysWhatItIs) {
    struct Case {
        const char* name;
        const char* arguments;
        uint32_t type;
    };
    const Case cases[] = {{"a.mp3", "-b:a 128k", BASS_CTYPE_STREAM_MP3},
                          {"b.aac", "-b:a 96k", BASS_CTYPE_STREAM_AAC},
                          {"c.flac", "", BASS_CTYPE_STREAM_FLAC},
                          {"d.ogg", "-c:a libvorbis", BASS_CTYPE_STREAM_OGG},
                          {"e.ogg", "-c:a libopus -ar 48000", BASS_CTYPE_STREAM_OPUS},
                          {"f.ogg", "-c:a flac", BASS_CTYPE_STREAM_FLAC}};
    for (const Case& test : cases) {
        const std::string bytes = Encoded(600.0, 4.0, test.name, test.arguments);
        Serve({{"/", Station(Head("Content-Type: audio/mpeg\r\n"), bytes)}});  // which servers often say of anything
        const HSTREAM stream = Listen();
        ASSERT_TRUE(RenderUntilPlaying(stream)) << test.name;
        Render(kRate / 4);  // an encoder begins with silence
        const Samples heard = Render(kRate);
        EXPECT_NEAR(FrequencyOf(Left(heard), kRate), 600.0, 2.0) << test.name;
        EXPECT_NEAR(Rms(heard), 0.5 / 1.414, 0.03) << test.name;
        BASS_CHANNELINFO info{};
        ASSERT_TRUE(BASS_ChannelGetInfo(stream, &info));
        EXPECT_EQ(info.ctype, test.type) << test.name;
        EXPECT_EQ(Tags(stream, BASS_TAG_HTTP), "icy-name:Tone Radio\ncontent-type:audio/mpeg");
        BASS_StreamFree(stream);
        StopServing();
    }
}

TEST_F(NetworkSound, ATitleAppearsWhenItsMusicIsHeard) {
    const std::string first = Encoded(500.0, 5.0), second = Encoded(900.0, 4.0);
    const std::string stream = WithTitles(first + second, 1000,
                                          {{0, "StreamTitle='Erste';"},
                                           {first.size(),
                                            "StreamTitle='Gr\xFC\xDF"
                                            "e';"}});
    Serve({{"/", Station("ICY 200 OK\r\nicy-metaint: 1000\r\nicy-br:128\r\n\r\n", stream)}});
    const HSTREAM radio = Listen();
    ASSERT_TRUE(HasArrived(radio, 80'000));
    ASSERT_TRUE(RenderUntilPlaying(radio));
    EXPECT_EQ(Tags(radio, BASS_TAG_META), "StreamTitle='Erste';");
    EXPECT_EQ(Tags(radio, BASS_TAG_ICY), "icy-metaint:1000\nicy-br:128");
    int toneChange = -1, titleChange = -1;
    for (int i = 0; i < 80; i++) {
        const Samples part = Render(kRate / 10);
        if (toneChange < 0 && IsTone(part, 900.0)) toneChange = i;
        if (titleChange < 0 && Tags(radio, BASS_TAG_META) == "StreamTitle='Gr\u00FC\u00DFe';") titleChange = i;
    }
    ASSERT_GT(toneChange, 40);
    EXPECT_NEAR(toneChange, titleChange, 2);
    float rate = 0.0f;
    EXPECT_TRUE(BASS_ChannelGetAttribute(radio, BASS_ATTRIB_BITRATE, &rate));
    EXPECT_NEAR(rate, 128.0f, 3.0f);
}

TEST_F(NetworkSound, ChainedOggGoesOnWithoutAGapAndChangesItsTitle) {
    const std::string first = Encoded(500.0, 3.0, "a.ogg", "-c:a libopus -ar 48000 -metadata title=One");
    const std::string second = Encoded(900.0, 3.0, "b.ogg", "-c:a libvorbis -ar 32000 -metadata title=Two");
    Serve({{"/", Station(Head("Content-Type: application/ogg\r\n"), first + second + first)}});
    const HSTREAM radio = Listen();
    ASSERT_TRUE(HasArrived(radio, first.size() + second.size()));
    ASSERT_TRUE(RenderUntilPlaying(radio));
    std::string order;
    for (int i = 0; i < 70; i++) {
        const Samples part = Render(kRate / 10);
        EXPECT_GT(Rms(part), 0.2) << i;
        const char tone = IsTone(part, 500.0) ? '5' : IsTone(part, 900.0) ? '9' : '?';
        if (tone == '?') continue;  // both
        if (order.empty() || order.back() != tone) order += tone;
        if (i % 10 != 5) continue;
        const std::string title = Tags(radio, BASS_TAG_OGG);
        EXPECT_NE(title.find(tone == '5' ? "TITLE=One" : "TITLE=Two"), std::string::npos) << i << title;
    }
    EXPECT_EQ(order, "595");
}

TEST_F(NetworkSound, APauseOfTheNetworkIsHeardOnlyWhenTheBufferIsEmptyAndThenWithoutStutter) {
    constexpr size_t kSecond = 16'000;  // bytes
    const std::string bytes = Encoded(500.0, 20.0);
    gate_->Allow(kSecond * 8);
    Serve({{"/", Station(Head(""), bytes)}});
    const HSTREAM radio = Listen();
    ASSERT_TRUE(HasArrived(radio, kSecond * 5));
    ASSERT_TRUE(RenderUntilPlaying(radio));
    for (int i = 0; i < 70; i++) EXPECT_GT(Rms(Render(kRate / 10)), 0.3) << i;
    const Samples end = Render(kRate * 2);
    EXPECT_EQ(BASS_ChannelIsActive(radio), BASS_ACTIVE_STALLED);
    EXPECT_EQ(Peak(Part(end, end.size() / 2, end.size() / 2)), 0.0f);
    EXPECT_LT(SteepestStep(end), 0.06) << "it must fade out";  // the tone's own is 0.036

    gate_->Allow(kSecond * 8 + kSecond / 2);  // not enough to begin again
    EXPECT_EQ(Peak(Render(kRate)), 0.0f);
    gate_->Allow(kAll);
    ASSERT_TRUE(RenderUntilPlaying(radio));
    for (int i = 0; i < 50; i++) EXPECT_GT(Rms(Render(kRate / 10)), 0.3) << i;
}

TEST_F(NetworkSound, ALostConnectionIsMadeAgain) {
    const std::string first = Encoded(500.0, 4.0), second = Encoded(900.0, 5.0);
    auto connections = std::make_shared<std::atomic<int>>(0);
    const HttpServer::Answer later = Station(Head(""), second);
    Serve({{"/", [=](const Socket& connection, const std::string& request) {
                if (++*connections == 1) return connection.Send(Head("") + first) && false;
                if (*connections == 2) return connection.Send("HTTP/1.0 503 Not now\r\n\r\n") && false;
                return later(connection, request);
            }}});
    const HSTREAM radio = Listen();
    ASSERT_TRUE(RenderUntilPlaying(radio));
    EXPECT_TRUE(IsTone(Render(kRate / 2), 500.0));
    ASSERT_TRUE(Eventually([&] { return *connections == 3; }));
    ASSERT_TRUE(HasArrived(radio, second.size() / 2));
    ASSERT_TRUE(Eventually([&] { return IsTone(Render(kRate / 10), 900.0); }));
    EXPECT_TRUE(IsTone(Render(kRate), 900.0));
}

TEST_F(NetworkSound, ABadServerIsAnErrorCodeInTime) {
    std::string noise(200'000, '\0');
    std::mt19937 random(3);
    for (char& byte : noise) byte = static_cast<char>(random());
    Serve({{"/missing", HttpServer::Text("HTTP/1.0 404 Not Found\r\n\r\nnone")},
           {"/denied", HttpServer::Text("HTTP/1.0 401 Unauthorized\r\n\r\n")},
           {"/page", HttpServer::Text("HTTP/1.0 200 OK\r\nContent-Type: text/html\r\n\r\n<html>")},
           {"/circle", HttpServer::Text("HTTP/1.0 302 Found\r\nLocation: /circle\r\n\r\n")},
           {"/file", HttpServer::Text("HTTP/1.0 302 Found\r\nLocation: file:///etc/passwd\r\n\r\n")},
           {"/empty", HttpServer::Text("HTTP/1.0 200 OK\r\n\r\n")},
           {"/noise", HttpServer::Endless("HTTP/1.0 200 OK\r\n\r\n", noise)},
           {"/headers", HttpServer::Endless("HTTP/1.0 200 OK\r\n", "X-More: " + std::string(1000, 'x') + "\r\n")},
           {"/silence", HttpServer::ThenSilence("HTTP/1.0 200 OK\r\n\r\n")},
           {"/nothing", HttpServer::ThenSilence("")}});
    BASS_SetConfig(BASS_CONFIG_NET_TIMEOUT, 500);
    const std::pair<const char*, int> cases[] = {{"/missing", BASS_ERROR_FILEOPEN}, {"/denied", BASS_ERROR_DENIED},
                                                 {"/page", BASS_ERROR_FILEFORM},    {"/circle", BASS_ERROR_FILEOPEN},
                                                 {"/file", BASS_ERROR_FILEOPEN},    {"/empty", BASS_ERROR_FILEOPEN},
                                                 {"/noise", BASS_ERROR_FILEFORM},   {"/headers", BASS_ERROR_FILEOPEN},
                                                 {"/silence", BASS_ERROR_TIMEOUT},  {"/nothing", BASS_ERROR_TIMEOUT}};
    for (const auto& [path, error] : cases) {
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_EQ(BASS_StreamCreateURL(server_->Url(path).c_str(), 0, BASS_SAMPLE_FLOAT, nullptr, nullptr), 0u) << path;
        EXPECT_EQ(BASS_ErrorGetCode(), error) << path;
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(3)) << path;
    }
    EXPECT_EQ(BASS_StreamCreateURL("file:///etc/passwd", 0, BASS_SAMPLE_FLOAT, nullptr, nullptr), 0u);
}

TEST_F(NetworkSound, OpeningEndsWhenItsWorkerIsToldToStop) {
    Serve({{"/", HttpServer::ThenSilence("HTTP/1.0 200 OK\r\n\r\n")}});
    std::atomic<bool> isOver{false};
    Worker worker;
    worker.Start([&, url = server_->Url("/")](const std::stop_token&) {
        EXPECT_EQ(BASS_StreamCreateURL(url.c_str(), 0, BASS_SAMPLE_FLOAT, nullptr, nullptr), 0u);
        isOver = true;
    });
    ASSERT_TRUE(Eventually([&] { return server_->Connections() == 1; }));
    const auto begin = std::chrono::steady_clock::now();
    worker.Cancel();
    EXPECT_TRUE(Eventually([&] { return isOver.load(); }));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2));
}

}  // namespace hullrider
