/* The least Windows program with the game server's window; it closes on request. */
#include <windows.h>

int WINAPI WinMain(HINSTANCE instance, HINSTANCE previous, LPSTR arguments, int show)
{
    WNDCLASSA windowClass = {0, DefWindowProcA, 0, 0, instance, 0, 0, 0, 0, "Game"};
    RegisterClassA(&windowClass);
    HWND window = CreateWindowA("Game", "Ghost Recon", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50,
                                300, 200, 0, 0, instance, 0);
    MSG message;
    while (IsWindow(window) && GetMessageA(&message, 0, 0, 0) > 0) {
        DispatchMessageA(&message);
    }
    return 0;
}
