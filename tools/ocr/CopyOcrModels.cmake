# cmake -DSOURCE=... -DDESTINATION=... -P CopyOcrModels.cmake
# Copies the fetched models when they are there; without them the service serves the
# fast engine only, so their absence is reported, not fatal.
set(files ch_PP-OCRv4_det.onnx ch_PP-OCRv4_rec.onnx ppocr_keys_v1.txt)
foreach(file IN LISTS files)
    if(NOT EXISTS "${SOURCE}/${file}")
        message(NOTICE "morvane-ocr: no ${file} in ${SOURCE}; run scripts/fetch-ocr-models")
        return()
    endif()
endforeach()
file(MAKE_DIRECTORY "${DESTINATION}")
foreach(file IN LISTS files)
    file(COPY_FILE "${SOURCE}/${file}" "${DESTINATION}/${file}" ONLY_IF_DIFFERENT)
endforeach()
