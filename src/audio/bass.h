// The player's one interface to sound: C-style functions on 32-bit handles. It holds only what the player uses. Values
// and error codes are the known ones for these names; the implementation is this room's own.
//
// - A handle is never reused while the program runs. A call on a freed or wrong handle fails and touches nothing.
// - Every function may be called from any thread except the device's callback. Failures leave a code for
//   BASS_ErrorGetCode, kept for each thread; a success sets BASS_OK.
// - A channel is mono or stereo: files with more channels are folded down to two.
// - Bytes are those of the channel's own interleaved 32-bit float frames: 4 * channels a frame, at its own sample rate.
// - Positions are those of what is heard. The level is that of the data after its effects and before its volume.
// - A volume slide is linear in amplitude, to the sample, from the volume at which it begins.
#pragma once

#include <cstdint>

using HSTREAM = uint32_t;     // a file, MIDI or network stream
using HMUSIC = uint32_t;      // a tracker module
using HPLUGIN = uint32_t;     // a decoder, all of which are built in
using HSOUNDFONT = uint32_t;  // a SoundFont in memory
using HDSP = uint32_t;        // a procedure in a channel's effect chain
using HFX = uint32_t;         // a filter in a channel's effect chain

// Error codes.
inline constexpr int BASS_OK = 0;
inline constexpr int BASS_ERROR_MEM = 1;        // out of memory
inline constexpr int BASS_ERROR_FILEOPEN = 2;   // cannot open the file
inline constexpr int BASS_ERROR_DRIVER = 3;     // no usable device driver
inline constexpr int BASS_ERROR_HANDLE = 5;     // not a handle of the right type
inline constexpr int BASS_ERROR_FORMAT = 6;     // sample format not supported
inline constexpr int BASS_ERROR_POSITION = 7;   // no such position
inline constexpr int BASS_ERROR_INIT = 8;       // BASS_Init has not succeeded
inline constexpr int BASS_ERROR_SSL = 10;       // no encrypted connection, or its certificate is not trusted
inline constexpr int BASS_ERROR_ALREADY = 14;   // already done
inline constexpr int BASS_ERROR_NOCHAN = 18;    // too many channels
inline constexpr int BASS_ERROR_ILLTYPE = 19;   // unknown attribute or position mode
inline constexpr int BASS_ERROR_ILLPARAM = 20;  // value out of range
inline constexpr int BASS_ERROR_DEVICE = 23;    // no such device
inline constexpr int BASS_ERROR_NOPLAY = 24;    // not playing
inline constexpr int BASS_ERROR_NOTAVAIL = 37;  // not available
inline constexpr int BASS_ERROR_DECODE = 38;    // the channel decodes and is not played, or the other way round
inline constexpr int BASS_ERROR_TIMEOUT = 40;   // the network time-out has passed, or the call was canceled
inline constexpr int BASS_ERROR_FILEFORM = 41;  // the file's format is not supported or the file is damaged
inline constexpr int BASS_ERROR_CODEC = 44;     // the codec is not supported
inline constexpr int BASS_ERROR_ENDED = 45;     // the channel has ended
inline constexpr int BASS_ERROR_DENIED = 49;    // the server denies access
inline constexpr int BASS_ERROR_UNKNOWN = -1;

// Flags of stream and module creation.
inline constexpr uint32_t BASS_SAMPLE_LOOP = 0x4;
inline constexpr uint32_t BASS_SAMPLE_FLOAT = 0x100;
inline constexpr uint32_t BASS_STREAM_DECODE = 0x200000;  // source for a tempo stream; cannot be played itself
inline constexpr uint32_t BASS_STREAM_STATUS = 0x800000;  // accepted; there is no download callback
inline constexpr uint32_t BASS_MUSIC_PRESCAN = 0x20000;   // accepted; lengths are always known
inline constexpr uint32_t BASS_UNICODE = 0x80000000;      // accepted; paths are always UTF-8 here

// Flags of BASS_FX_TempoCreate.
inline constexpr uint32_t BASS_FX_FREESOURCE = 0x10000;  // its source is freed with it

// Attributes.
inline constexpr uint32_t BASS_ATTRIB_VOL = 2;
inline constexpr uint32_t BASS_ATTRIB_BITRATE = 12;     // kbit/s, read only; network streams, on average so far
inline constexpr uint32_t BASS_ATTRIB_TEMPO = 0x10000;  // tempo stream only: percent faster, -50 to 200; cannot slide

// Tag formats.
inline constexpr uint32_t BASS_TAG_ID3 = 0;               // an ID3v1 tag, 128 bytes
inline constexpr uint32_t BASS_TAG_OGG = 2;               // UTF-8 "NAME=value", each zero-terminated, and a final zero
inline constexpr uint32_t BASS_TAG_HTTP = 3;              // a server's headers, "name:value", as BASS_TAG_OGG, UTF-8
inline constexpr uint32_t BASS_TAG_ICY = 4;               // the same from an old server, which answers "ICY 200 OK"
inline constexpr uint32_t BASS_TAG_META = 5;              // a stream's title block, "StreamTitle='...';", UTF-8
inline constexpr uint32_t BASS_TAG_MP4 = 7;               // as BASS_TAG_OGG
inline constexpr uint32_t BASS_TAG_MUSIC_NAME = 0x10000;  // a module's title, UTF-8
inline constexpr uint32_t BASS_TAG_MIDI_TRACK = 0x11000;  // the name of a MIDI song, UTF-8

// Modes of BASS_StreamGetFilePosition.
inline constexpr uint32_t BASS_FILEPOS_CONNECTED = 4;
inline constexpr uint32_t BASS_FILEPOS_BUFFER = 5;

// Options of BASS_SetConfig.
inline constexpr uint32_t BASS_CONFIG_NET_TIMEOUT = 11;  // ms until BASS_StreamCreateURL gives up; 10 000 at first

// Position modes.
inline constexpr uint32_t BASS_POS_BYTE = 0;

// States of BASS_ChannelIsActive.
inline constexpr uint32_t BASS_ACTIVE_STOPPED = 0;
inline constexpr uint32_t BASS_ACTIVE_PLAYING = 1;
inline constexpr uint32_t BASS_ACTIVE_STALLED = 2;
inline constexpr uint32_t BASS_ACTIVE_PAUSED = 3;

// The results of a failed length or position call, and of a failed level call.
inline constexpr uint64_t BASS_QWORD_ERROR = ~uint64_t{0};
inline constexpr uint32_t BASS_LEVEL_ERROR = ~uint32_t{0};

struct BASS_CHANNELINFO {
    uint32_t freq;         // sample rate, Hz
    uint32_t chans;        // channels, 1 or 2
    uint32_t flags;        // as given at creation and changed by BASS_ChannelFlags
    uint32_t ctype;        // one of the BASS_CTYPE values
    const char* filename;  // UTF-8; valid while the channel lives
};

inline constexpr uint32_t BASS_CTYPE_STREAM = 0x10000;      // anything FFmpeg decodes
inline constexpr uint32_t BASS_CTYPE_STREAM_OGG = 0x10002;  // this and the next: network streams only
inline constexpr uint32_t BASS_CTYPE_STREAM_MP3 = 0x10005;
inline constexpr uint32_t BASS_CTYPE_STREAM_FLAC = 0x10900;
inline constexpr uint32_t BASS_CTYPE_STREAM_AAC = 0x10b00;
inline constexpr uint32_t BASS_CTYPE_STREAM_OPUS = 0x11200;
inline constexpr uint32_t BASS_CTYPE_STREAM_MIDI = 0x10d00;
inline constexpr uint32_t BASS_CTYPE_STREAM_TEMPO = 0x1f200;
inline constexpr uint32_t BASS_CTYPE_MUSIC_MOD = 0x20000;

// One entry of a stream's SoundFont list: all presets of `font` when `preset` is -1.
struct BASS_MIDI_FONT {
    HSOUNDFONT font;
    int preset;
    int bank;
};

// Changes `length` bytes of a channel's sound in place: interleaved floats at the mixing rate, mono for a mono channel,
// else stereo. `dsp` and `channel` are the handles. Runs in the device's callback: it must not wait, allocate or call
// this library. It also receives the sound that fades out after a pause or a stop, and receives it again when the
// channel goes on.
using DSPPROC = void(HDSP dsp, uint32_t channel, void* buffer, uint32_t length, void* user);

// Types of effects: each is one second-order filter.
inline constexpr uint32_t BASS_FX_BFX_PEAKEQ = 0x10004;
inline constexpr uint32_t BASS_FX_BFX_BQF = 0x10013;

// lChannel: all channels, the only valid value.
inline constexpr int BASS_BFX_CHANALL = -1;

// lFilter of a BASS_BFX_BQF.
inline constexpr int BASS_BFX_BQF_LOWPASS = 0;
inline constexpr int BASS_BFX_BQF_HIGHPASS = 1;
inline constexpr int BASS_BFX_BQF_BANDPASS = 2;    // 0 dB at its center
inline constexpr int BASS_BFX_BQF_BANDPASS_Q = 3;  // a gain of Q at its center
inline constexpr int BASS_BFX_BQF_NOTCH = 4;
inline constexpr int BASS_BFX_BQF_ALLPASS = 5;
inline constexpr int BASS_BFX_BQF_PEAKINGEQ = 6;
inline constexpr int BASS_BFX_BQF_LOWSHELF = 7;
inline constexpr int BASS_BFX_BQF_HIGHSHELF = 8;

// Formulas and ranges: audio/biquad.h. A shelf uses fS unless it is 0; all filters use fBandwidth unless it is 0, and
// fQ otherwise.
struct BASS_BFX_BQF {
    int lFilter;
    float fCenter;     // Hz
    float fGain;       // dB, of peaking filters and shelves
    float fBandwidth;  // octaves
    float fQ;
    float fS;  // slope of a shelf
    int lChannel;
};

// A peaking filter. An effect holds one band; its number is stored but has no meaning.
struct BASS_BFX_PEAKEQ {
    int lBand;
    float fBandwidth;  // octaves; 0: fQ is used
    float fQ;
    float fCenter;  // Hz
    float fGain;    // dB
    int lChannel;
};

extern "C" {

int BASS_ErrorGetCode();

// Opens a sound output that mixes at `freq` Hz or at the device's own rate. Device -1 is the default device, also after
// it changes; 0 is the null device, which keeps time without sound. Fails with BASS_ERROR_ALREADY, _DEVICE (no such
// device), _DRIVER (the default device cannot be opened).
bool BASS_Init(int device, uint32_t freq, uint32_t flags, void* window, const void* classId);

// Stops the output and frees every channel, font and plug-in. The library may be initialized again.
bool BASS_Free();

// Sets an option, before or after BASS_Init. BASS_ERROR_ILLPARAM for any other.
bool BASS_SetConfig(uint32_t option, uint32_t value);

// Decoders are built in: returns a handle for the names that the player knows ("bassmidi.dll", "bass_aac.dll",
// "BASSFLAC.dll") and fails with BASS_ERROR_FILEOPEN for any other.
HPLUGIN BASS_PluginLoad(const char* file, uint32_t flags);
bool BASS_PluginFree(HPLUGIN plugin);

// A stream from the file at `file` (UTF-8): mp3, m4a, flac, wav, ogg, opus, MIDI. `fromMemory` must be false, `offset`
// and `length` 0. Returns 0 on failure: BASS_ERROR_FILEOPEN, _FILEFORM, _FORMAT, _CODEC, _INIT, _ILLPARAM.
HSTREAM BASS_StreamCreateFile(bool fromMemory, const char* file, uint64_t offset, uint64_t length, uint32_t flags);

// A stream from the http or https URL at `url`: MP3, AAC, FLAC, or Vorbis, Opus or FLAC in Ogg. Returns when its first
// sound is decoded, at the latest after the network time-out, or at once when the calling worker is told to stop.
// `offset` must be 0, `procedure` null. Returns 0 on failure: BASS_ERROR_TIMEOUT, _FILEOPEN (no answer, or no success),
// _DENIED, _SSL, _FILEFORM, _CODEC, _FORMAT, _INIT, _ILLPARAM; a line on the error stream says why.
//
// It has no length, and no position can be set. It holds up to 4 MB that have arrived, sounds when a second of them is
// decoded, and is stalled (BASS_ACTIVE_STALLED) when they run out, until there is a second again. A lost connection is
// made again after half a second to 30 s.
using DOWNLOADPROC = void(const void* buffer, uint32_t length, void* user);
HSTREAM BASS_StreamCreateURL(const char* url, uint32_t offset, uint32_t flags, DOWNLOADPROC* procedure, void* user);

// Of a network stream. BASS_FILEPOS_BUFFER: the bytes that have arrived and were not decoded yet; _CONNECTED: 1 while
// it receives, 0 while its connection is lost. BASS_QWORD_ERROR on failure: BASS_ERROR_HANDLE, _ILLPARAM.
uint64_t BASS_StreamGetFilePosition(HSTREAM handle, uint32_t mode);

bool BASS_StreamFree(HSTREAM handle);  // also takes an HMUSIC

// A tracker module; otherwise as BASS_StreamCreateFile. `freq` is ignored: modules are rendered at the mixing rate.
HMUSIC BASS_MusicLoad(bool fromMemory, const char* file, uint64_t offset, uint32_t length, uint32_t flags,
                      uint32_t freq);
bool BASS_MusicFree(HMUSIC handle);

// Plays the decoding channel `channel` (BASS_STREAM_DECODE) at any tempo and its own pitch. Positions and lengths are
// those of the file. Returns 0 on failure: BASS_ERROR_HANDLE, _DECODE (not a decoding channel), _ALREADY (it already
// has a tempo stream, or one was freed a moment ago).
HSTREAM BASS_FX_TempoCreate(uint32_t channel, uint32_t flags);

// Plays from the channel's position, or from the start when `restart` is set or the channel had ended. A channel that
// is paused, stopped or freed while it sounds fades out over 5 ms, or over half a millisecond when it is also moved at
// once; these 5 ms are heard again when it goes on.
bool BASS_ChannelPlay(uint32_t handle, bool restart);
bool BASS_ChannelPause(uint32_t handle);
bool BASS_ChannelStop(uint32_t handle);

// Decodes a stopped channel up to `length` ms ahead, and returns when that much, or all there is, is ready. False when
// the channel was freed meanwhile or failed before its first frame.
bool BASS_ChannelUpdate(uint32_t handle, uint32_t length);

// Sets the flags in `mask` to those in `flags`; only BASS_SAMPLE_LOOP can change. Returns all of the channel's flags,
// ~0 on failure. Sound that is already decoded does not change.
uint32_t BASS_ChannelFlags(uint32_t handle, uint32_t flags, uint32_t mask);

uint32_t BASS_ChannelIsActive(uint32_t handle);
bool BASS_ChannelGetInfo(uint32_t handle, BASS_CHANNELINFO* info);

// The file's tags in the given format, valid while the channel lives. Null and BASS_ERROR_NOTAVAIL when there are none:
// BASS_TAG_MP4 is for m4a, _OGG for all other files that FFmpeg reads; mp3 has _ID3 too, which truncates titles (both
// are made from whatever tag the file has); _MUSIC_NAME is for modules; _MIDI_TRACK for MIDI songs whose first track
// does not name a mere part. A network stream has _HTTP or _ICY, and _META or _OGG (Ogg) as of what is heard, valid
// until the thread's next call.
const char* BASS_ChannelGetTags(uint32_t handle, uint32_t tags);

// Bytes; BASS_QWORD_ERROR on failure.
uint64_t BASS_ChannelGetLength(uint32_t handle, uint32_t mode);
uint64_t BASS_ChannelGetPosition(uint32_t handle, uint32_t mode);
bool BASS_ChannelSetPosition(uint32_t handle, uint64_t position, uint32_t mode);
double BASS_ChannelBytes2Seconds(uint32_t handle, uint64_t bytes);  // negative on failure
uint64_t BASS_ChannelSeconds2Bytes(uint32_t handle, double seconds);

// Attributes. The volume starts at 0.0 (silent); 1.0 leaves the data unchanged.
bool BASS_ChannelSetAttribute(uint32_t handle, uint32_t attribute, float value);
bool BASS_ChannelGetAttribute(uint32_t handle, uint32_t attribute, float* value);
bool BASS_ChannelSlideAttribute(uint32_t handle, uint32_t attribute, float value, uint32_t timeMs);
bool BASS_ChannelIsSliding(uint32_t handle, uint32_t attribute);

// The latest peak, left in the low 16 bits and right in the high 16, 0 to 32768 each; BASS_LEVEL_ERROR when the channel
// does not play.
uint32_t BASS_ChannelGetLevel(uint32_t handle);

// Effects change a channel's sound: those of higher priority first, then in the order in which they were set. They are
// freed with their channel. Setting, changing and removing them makes no click.
//
// Once a procedure is removed, or its channel freed, it is not running and is not called again.
HDSP BASS_ChannelSetDSP(uint32_t handle, DSPPROC* procedure, void* user, int priority);
bool BASS_ChannelRemoveDSP(uint32_t handle, HDSP dsp);

// A filter does nothing, and costs nothing, until it has parameters, and at 0 dB. Parameters out of range fail with
// BASS_ERROR_ILLPARAM and change nothing. `parameters` is the struct of the effect's type.
HFX BASS_ChannelSetFX(uint32_t handle, uint32_t type, int priority);
bool BASS_ChannelRemoveFX(uint32_t handle, HFX fx);
bool BASS_FXSetParameters(HFX fx, const void* parameters);
bool BASS_FXGetParameters(HFX fx, void* parameters);

// SoundFonts. A stream created before any font was set becomes audible as soon as it gets one.
HSOUNDFONT BASS_MIDI_FontInit(const char* file, uint32_t flags);
bool BASS_MIDI_FontFree(HSOUNDFONT font);
bool BASS_MIDI_StreamSetFonts(HSTREAM handle, const BASS_MIDI_FONT* fonts, uint32_t count);  // 0: the default for all

}  // extern "C"
