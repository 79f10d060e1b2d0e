/*
 * C interface of the closed camera library libzr_com.so: image DSP, video encoders, audio and pins.
 * Every function returns a negative number on failure.
 */
#ifndef TMX_PLATFORM_ZR_COM_H
#define TMX_PLATFORM_ZR_COM_H

#ifdef __cplusplus
extern "C" {
#endif

int zr_set_va_data(unsigned char* frame); /* 12 bytes */
int zr_get_va_data(unsigned char* frame); /* 12 bytes; byte 0 holds the address on entry; overwritten */
int zr_set_camera_id(const char* id);
int zr_set_video_enc_format(int channel, int format);
int zr_set_video_resolution(int channel, int width, int height);
int zr_set_video_framerate(int channel, int fps);
int zr_set_video_cbr_mode(int channel, int mode);
int zr_set_video_bitrate(int channel, int kbps);
int zr_set_video_filesize(int channel, int quality);
int zr_set_video_i_interval(int channel, int interval);
int zr_set_video_encoder_ctl(int channel, int action);
int zr_set_video_analog_out(int mode);
int zr_set_audio_play(int clip);
int zr_set_audio_duplex(int mode);
int zr_set_timezone(const char* name);
int zr_get_gpio(int id, unsigned char* value, unsigned char* other, int flag);

#ifdef __cplusplus
}
#endif

#endif
