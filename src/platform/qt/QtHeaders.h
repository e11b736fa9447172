// The Qt headers that most files here parse, precompiled once and shared between targets.
#pragma once

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QHash>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPainter>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QString>
#include <QTableView>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>
#include <string>
#include <vector>
