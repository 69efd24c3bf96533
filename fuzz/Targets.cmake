# Every fuzz target: built by clang for `fuzz/run`, and by the compiler of the tree into the tests, where it is fed what once
# failed.
set(ZPL_FUZZ_TARGETS
    FuzzBars
    FuzzBusMessages
    FuzzImageData
    FuzzPackets
    FuzzPageWriter
    FuzzScripts
    FuzzSession
    FuzzStoredObjects
    FuzzStreamWatch
    FuzzSymbols
    FuzzTokenizer
    FuzzWeb
)
