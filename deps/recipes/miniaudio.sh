# miniaudio: sound devices. One header; the part that compiles it chooses what it holds.
fetch_sources() { fetch miniaudio 0.11.22+dfsg-1 'miniaudio_*.orig.tar.gz'; }
build() {
    unpack miniaudio 'miniaudio_*.orig.tar.gz'
    cd miniaudio-*/
    free_failed_connections
    cp miniaudio.h "$prefix/include/"
}

# A connection to PulseAudio that fails is never let go: its file descriptor and 64 MB of address space stay, at every
# attempt to open a device while no server runs.
free_failed_connections() {
    local message let_go='((ma_pa_context_unref_proc)pContext->pulse.pa_context_unref)((ma_pa_context*)(pPulseContext));'
    for message in 'Failed to connect PulseAudio context.' 'Waiting for connection failed.'; do
        sed -i "/\[PulseAudio\] $message/s/\$/\n        $let_go/" miniaudio.h
    done
    [ "$(grep -A2 -F "$let_go" miniaudio.h | grep -c pa_mainloop_free_proc)" = 2 ] ||
        fail "miniaudio: the places where a failed connection is to be let go are not there"
}
