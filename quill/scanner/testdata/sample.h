/* demo.h - a small header */
#ifndef DEMO_H
#define DEMO_H
#include <stdio.h>

typedef struct point { int x, y; } point_t;
static const char *greeting = L"hi\tthere";
extern char sep = ',';
int add(int a, int b); // sum
char nl = '\n';
int d = p->n != 0;
#define MASK 0x1F
#endif
